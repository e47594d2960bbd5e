// The composition root: makes the rows and the flows that work on them, and connects each flow with
// what it uses. Only the dialog, and tests that need the whole window, include this file.
#pragma once

#include "app/desktop/desktop.h"
#include "app/flows/adding.h"
#include "app/flows/algorithm_selection.h"
#include "app/flows/banner_links.h"
#include "app/flows/clipboard_watch.h"
#include "app/flows/commands.h"
#include "app/flows/copying.h"
#include "app/flows/file_arrivals.h"
#include "app/flows/help.h"
#include "app/flows/job_intake.h"
#include "app/flows/list_edits.h"
#include "app/flows/list_menu.h"
#include "app/flows/option_switches.h"
#include "app/flows/saved_settings.h"
#include "app/flows/saving.h"
#include "app/flows/shell_entries.h"
#include "app/flows/sorting.h"
#include "app/flows/verification.h"
#include "app/install/installation.h"
#include "app/intake/intake.h"
#include "app/screen/screen.h"
#include "app/worker/hash_queue.h"

namespace app {

// Lives on the window's thread.
class MainWindow {
 public:
  // All parts must outlive the object.
  MainWindow(const Screen& screen, const Desktop& desktop, HashQueue& queue, Intake& intake,
             Installation& installation);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // Makes a new, empty screen show the options. Call once, after the settings are read.
  void Start();

  RowTable& GetRows() { return rows_; }
  Options& GetOptions() { return options_; }
  Hashing& GetHashing() { return hashing_; }
  ProgressDisplay& GetProgress() { return progress_; }
  Banners& GetBanners() { return banners_; }
  ExpectedHash& GetExpectedHash() { return expected_; }
  DetailsPane& GetDetails() { return details_; }
  FileArrivals& GetFileArrivals() { return arrivals_; }
  Adding& GetAdding() { return adding_; }
  Verification& GetVerification() { return verification_; }
  ListColumns& GetColumns() { return columns_; }
  ListCells& GetCells() { return cells_; }
  Sorting& GetSorting() { return sorting_; }
  AlgorithmSelection& GetAlgorithms() { return algorithms_; }
  LookUp& GetLookUp() { return lookUp_; }
  FileComparison& GetFileComparison() { return comparison_; }
  ListEdits& GetListEdits() { return edits_; }
  JobIntake& GetJobIntake() { return jobIntake_; }
  ClipboardWatch& GetClipboardWatch() { return clipboardWatch_; }
  BannerLinks& GetBannerLinks() { return bannerLinks_; }
  ShellEntries& GetShellEntries() { return shellEntries_; }
  SavedSettings& GetSettings() { return settings_; }
  Commands& GetCommands() { return commands_; }
  ListMenu& GetListMenu() { return listMenu_; }

 private:
  RowTable rows_;
  Options options_;
  OpenRequests openRequests_;
  Selection selection_;
  Hashing hashing_;
  ProgressDisplay progress_;
  Banners banners_;
  ExpectedHash expected_;
  DetailsPane details_;
  Refresh refresh_;
  FileArrivals arrivals_;
  Adding adding_;
  Verification verification_;
  ListColumns columns_;
  ListCells cells_;
  Sorting sorting_;
  AlgorithmSelection algorithms_;
  LookUp lookUp_;
  FileComparison comparison_;
  ListEdits edits_;
  JobIntake jobIntake_;
  ClipboardWatch clipboardWatch_;
  OptionsMenu optionsMenu_;
  OptionSwitches switches_;
  ShellEntries shellEntries_;
  BannerLinks bannerLinks_;
  Copying copying_;
  Saving saving_;
  Help help_;
  SavedSettings settings_;
  Commands commands_;
  ListMenu listMenu_;
};

}  // namespace app
