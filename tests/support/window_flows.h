// The rows and flows of a whole window, by name.
#pragma once

#include <cstddef>
#include <vector>

#include "app/window/main_window.h"

namespace app::testing {

struct WindowFlows {
  explicit WindowFlows(MainWindow& window)
      : rows(window.GetRows()),
        options(window.GetOptions()),
        hashing(window.GetHashing()),
        progress(window.GetProgress()),
        banners(window.GetBanners()),
        expected(window.GetExpectedHash()),
        details(window.GetDetails()),
        arrivals(window.GetFileArrivals()),
        adding(window.GetAdding()),
        verification(window.GetVerification()),
        columns(window.GetColumns()),
        cells(window.GetCells()),
        sorting(window.GetSorting()),
        algorithms(window.GetAlgorithms()),
        lookUp(window.GetLookUp()),
        comparison(window.GetFileComparison()),
        edits(window.GetListEdits()),
        intake(window.GetJobIntake()),
        clipboardWatch(window.GetClipboardWatch()),
        bannerLinks(window.GetBannerLinks()),
        shellEntries(window.GetShellEntries()),
        settings(window.GetSettings()),
        commands(window.GetCommands()),
        listMenu(window.GetListMenu()) {}

  // Removes the rows with these indexes.
  void RemoveRows(const std::vector<size_t>& indexes) {
    RowIds ids;
    for (const size_t index : indexes) ids.push_back(rows[index].id);
    edits.RemoveRows(ids);
  }

  RowTable& rows;
  Options& options;
  Hashing& hashing;
  ProgressDisplay& progress;
  Banners& banners;
  ExpectedHash& expected;
  DetailsPane& details;
  FileArrivals& arrivals;
  Adding& adding;
  Verification& verification;
  ListColumns& columns;
  ListCells& cells;
  Sorting& sorting;
  AlgorithmSelection& algorithms;
  LookUp& lookUp;
  FileComparison& comparison;
  ListEdits& edits;
  JobIntake& intake;
  ClipboardWatch& clipboardWatch;
  BannerLinks& bannerLinks;
  ShellEntries& shellEntries;
  SavedSettings& settings;
  Commands& commands;
  ListMenu& listMenu;
};

}  // namespace app::testing
