// The state behind the main window, and the flows that work on it. Each group of functions below is
// a file of its own, named beside it. No flow knows a window handle: the screen is a View, the
// desktop a Desktop and the background thread a HashQueue.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/desktop/desktop.h"
#include "app/window/list_columns.h"
#include "app/window/list_row.h"
#include "app/window/row_verdict.h"
#include "app/window/view.h"
#include "app/worker/hash_queue.h"
#include "app/worker/worker.h"
#include "swr/hash/algorithms.h"

namespace app {

// Lives on the window's thread.
class MainWindow {
 public:
  // All three must outlive the object.
  MainWindow(View& view, Desktop& desktop, HashQueue& queue);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // Brings a new, empty screen in line with the state. Called once.
  void Start();

  // file_list.cpp: the rows, and when a row needs more hashing.
  ListRow* FindRow(uint64_t id);
  void RepaintRow(uint64_t id);
  // To be called after every change of the order or number of `rows`.
  void RebuildRowIndex();
  // Asks the worker for those digests of `mask` that the row lacks and nobody asked for yet.
  void QueueRow(ListRow& row, swr::AlgoMask mask);
  // The same for every row with the selected algorithms and, where a checksum file expects
  // something of it, the algorithms that this may belong to.
  void QueueAllRows();
  void RemoveRows(std::vector<size_t> indexes);
  void ClearList();
  void CancelAll();

  // add_paths.cpp: the one door into the list.
  // Takes files, and all files under folders, into the list, drops those that are there already,
  // and queues the new ones. Blocks until every folder is walked.
  void AddPaths(const std::vector<std::u16string>& paths);
  // A new row for a path, not in the list yet. It is born failed when the file can't be examined.
  std::unique_ptr<ListRow> MakeRow(const std::u16string& path);

  // result_intake.cpp: what the worker reports.
  void OnHashResults(std::vector<std::unique_ptr<ResultMessage>> results);
  void OnProgressTimer();
  void UpdateStatusLine();

  // list_view.cpp: what the list shows.
  // The text of a cell; empty outside the list.
  std::u16string CellText(size_t row, size_t column) const;
  void RebuildColumns();
  void SaveColumnWidths();

  // commands.cpp: what menus, buttons and keys do.
  // Carries out the command with this number of resource_ids.h. False for one that the window does
  // not know.
  bool OnCommand(uint32_t id);
  // Whether the command can be given.
  static bool IsCommandEnabled(uint32_t id);
  // The one way to change the selection of algorithms; an empty one becomes SHA-256 alone.
  void SetAlgoMask(swr::AlgoMask mask);

  // In display order; an index is the row's number in the list view.
  std::vector<std::unique_ptr<ListRow>> rows;
  // The value in the Expected hash box, once recognised.
  std::optional<ExpectedDigest> boxExpected;
  swr::AlgoMask algorithms = swr::DefaultAlgoMask;
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  std::vector<ColumnDef> columns;  // by column index of the list view
  FixedColumnWidths fixedWidths;

 private:
  void StartProgressTimer();
  void StopProgressTimer();
  void OnHashResult(const ResultMessage& result);
  void MarkHashingRow(const WorkerSnapshot& snapshot);
  void ShowFigures(const WorkerSnapshot& snapshot);
  void AddChosen(const std::vector<std::u16string>& paths);
  void ShowOptions();
  void ToggleAlgo(swr::AlgoId id);

  View& view_;
  Desktop& desktop_;
  HashQueue& queue_;
  std::unordered_map<uint64_t, size_t> rowIndex_;  // from id to index in `rows`
  uint64_t nextRowId_ = 1;
  bool timerRuns_ = false;
};

}  // namespace app
