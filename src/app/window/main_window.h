// The state behind the main window, and the flows that work on it. Each group of functions below is
// a file of its own, named beside it. No flow knows a window handle: the screen is a View, the
// desktop a Desktop, the background thread a HashQueue, and this copy of the program an
// Installation.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/desktop/desktop.h"
#include "app/install/installation.h"
#include "app/window/list_columns.h"
#include "app/window/list_row.h"
#include "app/window/list_tally.h"
#include "app/window/row_paths.h"
#include "app/window/row_verdict.h"
#include "app/window/view.h"
#include "app/worker/hash_queue.h"
#include "app/worker/worker.h"
#include "swr/checksums/checksum_line.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/hash/algorithms.h"

namespace app {

enum class BannerKind : uint8_t {
  None = 0,
  Clipboard = 1,
  ChecksumFileOffer = 2,
  StaleExplorer = 3,
  SkippedLines = 4,
};

// Rows by their ids. Menus, pickers and messages run message loops of their own, during which rows
// come, go and change places. What acts on rows is therefore given the ids of those that were
// chosen before such a loop, and passes over rows that are gone.
using RowIds = std::vector<uint64_t>;

// Lives on the window's thread.
class MainWindow {
 public:
  // All must outlive the object.
  MainWindow(View& view, Desktop& desktop, HashQueue& queue, Installation& installation);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // Brings a new, empty screen in line with the state. Called once, behind ReadSettings.
  void Start();

  // file_list.cpp: the rows, and when a row needs more hashing.
  ListRow* FindRow(uint64_t id);
  void RepaintRow(uint64_t id);
  // To be called after every change of the order or number of `rows`.
  void RebuildRowIndex();
  // The same, in the time of the new rows, where rows were only added behind the others.
  void IndexAddedRows();
  // Asks the worker for those digests of `mask` that the row lacks and nobody asked for yet. False
  // when there are none.
  bool QueueRow(ListRow& row, swr::AlgoMask mask);
  // The same for every row with the selected algorithms and, where a checksum file expects
  // something of it, the algorithms that this may belong to.
  void QueueAllRows();
  // QueueAllRows for the rows from this index on.
  void QueueRowsFrom(size_t first);
  RowIds SelectedIds() const;
  // Indexes outside the list are left out.
  RowIds IdsOf(const std::vector<size_t>& indexes) const;
  void RemoveRows(const RowIds& ids);
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
  void OnSignatureResult(uint64_t rowId, const swr::SignatureResult& result);
  void UpdateStatusLine();

  // expected_hash.cpp: the Expected hash box against the rows.
  // Reads the box anew, has what is missing hashed, and says the verdict in the result line. With
  // an empty box that is the summary of a verification.
  void CompareExpected();
  void OnExpectedEdited();
  // Puts the clipboard's text into the box.
  void PasteExpected();

  // verification.cpp: a checksum file becomes rows that know what their digests should be.
  void VerifyChecksumFile(const std::u16string& path);

  // banners.cpp: the line above the list that offers something.
  void ShowBanner(BannerKind kind, const std::u16string& markup, const std::u16string& payload);
  void HideBanner();
  void OnBannerLink(std::u16string_view link);

  // clipboard_watch.cpp: a hash that the user copied elsewhere.
  // Called when the window becomes active.
  void CheckClipboard();

  // saving.cpp
  void SaveChecksums();

  // copying.cpp: texts for the clipboard, which stays as it is when no row is left.
  void CopyHashes(const RowIds& ids);
  void CopyLines(const RowIds& ids);
  void CopyAllHashes(const RowIds& ids);
  void CopyPaths(const RowIds& ids);

  // list_menu.cpp
  // Shows the menu of the selected rows there, or without a place beside the focused one.
  void ShowListContextMenu(std::optional<ScreenPoint> at);

  // compare_files.cpp: whether two files are the same. Does nothing for more or fewer.
  void CompareTwoFiles(const RowIds& ids);

  // details.cpp: the pane under the list.
  void RefreshDetails();

  // look_up.cpp: handing one file on. Both do nothing for several.
  void LookUpOnVirusTotal(const RowIds& ids);
  void OpenContainingFolder(const RowIds& ids);

  // type_ahead.cpp: the first row from this index on, and around to it, whose name as it is shown
  // begins with the typed text, or with `whole` equals it, whatever the case.
  std::optional<size_t> FindRowNamed(std::u16string_view typed, size_t first, bool whole) const;

  // shell_entries.cpp: the entries that start the program, and what depends on how it was
  // installed. Turns the entry in Explorer's menu, or the one in the Send To menu, on or off.
  void ToggleShellEntry(bool explorer);
  // Offers to repair entries that start a copy which is gone. The last step of the start.
  void OfferStaleEntryRepair();
  void ShowAbout();
  void ShowCommandLineTool();

  // settings.cpp: what is kept from one run to the next.
  void ReadSettings();
  // The window goes where it was; its size must be final but for this.
  void RestorePlacement();
  void WriteSettings();

  // list_view.cpp: what the list shows.
  // The text of a cell; empty outside the list.
  std::u16string CellText(size_t row, size_t column) const;
  // None outside the list.
  RowTint TintOf(size_t row) const;
  void RebuildColumns();
  // sorting.cpp
  // The first click on a column sorts ascending, each further one the other way round.
  void SortByColumn(size_t column);
  void SaveColumnWidths();

  // commands.cpp: what menus, buttons and keys do.
  // Carries out the command with this number of resource_ids.h. False for one that the window does
  // not know.
  bool OnCommand(uint32_t id);
  // The same for the commands that act on rows, with these rows.
  bool OnRowCommand(uint32_t id, const RowIds& ids);
  // The one way to change the selection of algorithms; an empty one becomes SHA-256 alone.
  void SetAlgoMask(swr::AlgoMask mask);

  // In display order; an index is the row's number in the list view.
  RowList rows;
  // The value in the Expected hash box, once recognised.
  std::optional<swr::ParsedHash> boxExpected;
  swr::AlgoMask algorithms = swr::DefaultAlgoMask;
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  bool crLf = false;            // line ends of saved files
  bool startMaximized = false;  // how the window was closed
  BannerKind bannerKind = BannerKind::None;
  std::u16string bannerPayload;
  // A comparison of two files waits for digests of these rows.
  bool compareArmed = false;
  uint64_t compareFirstId = 0;
  uint64_t compareSecondId = 0;
  // The page of this row is to open once it has its SHA-256.
  bool lookupPending = false;
  uint64_t lookupRowId = 0;
  std::optional<size_t> sortColumn;
  bool sortDescending = false;
  std::vector<ColumnDef> columns;  // by column index of the list view
  FixedColumnWidths fixedWidths;

 private:
  void IndexRowsFrom(size_t first);
  // What the worker is to do so that the row has these digests, which count as asked for from now
  // on. Nothing when there is nothing to do.
  std::optional<HashJob> JobFor(ListRow& row, swr::AlgoMask mask);
  // False when there are none.
  bool QueueJobs(std::vector<HashJob> jobs);
  // To be called after a change of what the tally counts of a row.
  void CountAgain(const ListRow& row);
  void StartProgressTimer();
  void StopProgressTimer();
  void OnHashResult(ResultMessage& result);
  void MarkHashingRow(const WorkerSnapshot& snapshot);
  void ShowFigures(const WorkerSnapshot& snapshot);
  // Ascending. What the list view still takes for selected beyond the rows' end is left out.
  std::vector<size_t> SelectedIndexes() const;
  ListRow* SingleSelectedRow();
  // In the order of the ids.
  std::vector<const ListRow*> RowsOf(const RowIds& ids) const;
  std::u16string HashesText(const std::vector<const ListRow*>& chosen) const;
  // What every change of the rows ends with: result line, details, status line.
  void RefreshVerdicts();
  bool QueueCandidates(const swr::ParsedHash& expected, bool withCancelled);
  void RemoveRowsListedIn(const std::vector<swr::ChecksumLine>& lines,
                          const std::u16string& checksumFile);
  void ForgetPlainRow(const std::u16string& path);
  void FinishFileCompare();
  // To be called after a result for the row that is to be looked up, before the row is asked for
  // more. The address of the page that is to be opened now, if any.
  std::optional<std::u16string> FinishLookUp();
  std::u16string RowDetails(ListRow& row);
  void AddChosen(const std::vector<std::u16string>& paths);
  // Brings the menu in line with the options and with the entries of the shell.
  void ShowOptions();
  void PrepareMenus();
  void RepairStaleEntries(bool enable);
  void OpenProgramFolder();
  void SelectAlgo(swr::AlgoId id, bool isSelected);

  View& view_;
  Desktop& desktop_;
  HashQueue& queue_;
  Installation& installation_;
  // The index in `rows` of the row with this id, if there is one.
  std::optional<size_t> IndexOfRow(uint64_t id) const;
  static constexpr size_t NoRow = SIZE_MAX;
  std::vector<size_t> rowIndex_;  // by id, from the first one on; NoRow for a row that is gone
  uint64_t firstIndexedId_ = 0;
  ListTally tally_{rows};
  RowPaths paths_{rows};
  uint64_t nextRowId_ = 1;
  uint32_t clipboardSequence_ = 0;     // of the content that was looked at last
  std::u16string dismissedClipboard_;  // a text whose offer the user did not want
  bool timerRuns_ = false;
};

}  // namespace app
