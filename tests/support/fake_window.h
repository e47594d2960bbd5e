// Fakes of the screen, the desktop and the worker. They record calls, and return what the test has
// set.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/desktop/clipboard.h"
#include "app/desktop/desktop.h"
#include "app/desktop/messages.h"
#include "app/desktop/origin_reads.h"
#include "app/desktop/pickers.h"
#include "app/desktop/settings_store.h"
#include "app/desktop/shell.h"
#include "app/desktop/signature_checks.h"
#include "app/rows/row_id_set.h"
#include "app/screen/algo_boxes.h"
#include "app/screen/banner_view.h"
#include "app/screen/column_view.h"
#include "app/screen/details_view.h"
#include "app/screen/edit_focus.h"
#include "app/screen/expected_view.h"
#include "app/screen/frame.h"
#include "app/screen/list_view.h"
#include "app/screen/menu_view.h"
#include "app/screen/placement_view.h"
#include "app/screen/popup_menus.h"
#include "app/screen/progress_timer.h"
#include "app/screen/screen.h"
#include "app/screen/status_view.h"
#include "app/verdicts/result_line.h"
#include "app/worker/hash_queue.h"
#include "swr/hash/hash_file.h"
#include "swr/paths/path_forms.h"
#include "swr/system/fault_injection.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_install_system.h"
#include "tests/support/fake_intake.h"
#include "tests/support/window_flows.h"

namespace app {

// How GoogleTest prints these types.
inline void PrintTo(const ResultLine& line, std::ostream* out) {
  *out << '"' << swr::WideToUtf8(line.text) << "\", kind " << static_cast<int>(line.kind);
}
inline void PrintTo(const TaskDialogSpec& dialog, std::ostream* out) {
  *out << "icon " << static_cast<int>(dialog.icon) << ", \""
       << swr::WideToUtf8(dialog.mainInstruction) << "\", \"" << swr::WideToUtf8(dialog.content)
       << "\", \"" << swr::WideToUtf8(dialog.footer) << '"';
}
inline void PrintTo(const FileFilter& filter, std::ostream* out) {
  *out << '"' << swr::WideToUtf8(filter.label) << "\", \"" << swr::WideToUtf8(filter.pattern)
       << '"';
}

}  // namespace app

namespace app::testing {

class FakeView final : public ListView,
                       public ColumnView,
                       public ExpectedView,
                       public BannerView,
                       public DetailsView,
                       public StatusView,
                       public MenuView,
                       public PopupMenus,
                       public EditFocus,
                       public PlacementView {
 public:
  void SetRowCount(size_t count) override {
    rowCount = count;
    ++listPaints;
    std::erase_if(selected, [&](size_t row) { return row >= count; });
  }
  void RedrawRow(size_t index) override { redrawn.push_back(index); }
  void RedrawRows() override { ++redrawnWhole, ++listPaints; }
  std::vector<size_t> SelectedRows() const override { return selected; }
  size_t SelectedRowCount() const override { return selected.size(); }
  void ClearSelection() override { selected.clear(); }
  void SelectRow(size_t index) override {
    if (!acceptsSelection) return;
    selected.push_back(index);
    focused = index;
  }
  void ScrollToRow(size_t index) override { scrolledTo = index; }
  bool PasteIntoFocusedEdit() override {
    if (editHasFocus) ++pastesIntoEdit;
    return editHasFocus;
  }
  bool CopyFromFocusedEdit() override {
    if (editHasFocus) ++copiesFromEdit;
    return editHasFocus;
  }
  std::optional<ListMenuChoice> ChooseListCommand(const ListMenuEntries& menu,
                                                  std::optional<ScreenPoint> at) override {
    listMenu = menu;
    listMenuPlace = at;
    if (whileMenuShows) whileMenuShows();
    return listMenuChoice;
  }
  void SelectAll() override {
    selected.clear();
    for (size_t i = 0; i < rowCount; ++i) selected.push_back(i);
  }
  void SetColumns(const std::vector<ColumnSpec>& specs) override {
    columns = specs;
    ++columnRebuilds;
  }
  void ShowSortMark(std::optional<size_t> column, bool descending) override {
    sortMark = column;
    sortMarkDescending = descending;
  }
  std::vector<uint32_t> ColumnWidths() const override {
    std::vector<uint32_t> widths;
    for (const ColumnSpec& column : columns) widths.push_back(column.width);
    return widths;
  }
  void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& text) override {
    shownMask = mask;
    checkedBoxes = mask;
    moreText = text;
  }
  bool IsAlgoChecked(swr::AlgoId id) const override {
    return (checkedBoxes & swr::MaskOf(id)) != 0;
  }
  void ShowOptions(const OptionChecks& shown) override { options = shown; }
  void RemoveShellEntryCommands() override { hasShellEntryCommands = false; }
  void SetProgramFolderText(const std::u16string& text) override { programFolderText = text; }
  std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) override {
    menuMask = mask;
    menuHadLegacy = withLegacy;
    if (whileMenuShows) whileMenuShows();
    return algoToChoose;
  }
  std::u16string ExpectedText() const override { return expectedText; }
  void SetExpectedText(const std::u16string& text) override {
    expectedText = text;
    if (onExpectedEdited) onExpectedEdited();
  }
  void SetResultLine(const std::u16string& text, ResultKind kind) override {
    resultLine = text;
    resultKind = kind;
  }
  void ShowBanner(const std::u16string& markup) override { banner = markup; }
  void HideBanner() override { banner.reset(); }
  void SetDetails(const std::u16string& text, const DetailButtons& buttons) override {
    details = text;
    detailButtons = buttons;
    ++detailRefreshes;
  }
  void SetStatusText(const std::u16string& text) override { statusText = text; }
  void ShowProgress(const std::optional<ProgressFigures>& figures) override { progress = figures; }
  std::optional<WindowPlacement> Placement() const override { return placement; }
  bool MoveTo(const WindowPlacement& place) override {
    triedPlacement = place;
    return acceptsPlacement;
  }

  size_t rowCount = 0;
  std::vector<size_t> redrawn;
  int redrawnWhole = 0;
  int listPaints = 0;  // of the whole list, for any reason
  std::vector<size_t> selected;
  bool acceptsSelection = true;
  std::optional<size_t> focused;
  std::optional<size_t> scrolledTo;
  bool editHasFocus = false;
  int pastesIntoEdit = 0;
  int copiesFromEdit = 0;
  std::optional<ListMenuEntries> listMenu;
  std::optional<ScreenPoint> listMenuPlace;
  std::optional<ListMenuChoice> listMenuChoice;
  std::function<void()> whileMenuShows;  // of either menu
  std::u16string expectedText;
  std::function<void()> onExpectedEdited;
  std::u16string resultLine = u"(never set)";
  ResultKind resultKind = ResultKind::None;
  std::optional<std::u16string> banner;
  std::u16string details = u"(never set)";
  DetailButtons detailButtons;
  int detailRefreshes = 0;
  std::optional<WindowPlacement> placement;
  std::optional<WindowPlacement> triedPlacement;
  bool acceptsPlacement = true;
  std::vector<ColumnSpec> columns;
  int columnRebuilds = 0;
  std::optional<size_t> sortMark;
  bool sortMarkDescending = false;
  swr::AlgoMask shownMask = 0;
  swr::AlgoMask checkedBoxes = 0;
  std::u16string moreText;
  OptionChecks options;
  bool hasShellEntryCommands = true;
  std::u16string programFolderText;
  std::optional<swr::AlgoId> algoToChoose;
  swr::AlgoMask menuMask = 0;
  bool menuHadLegacy = false;
  std::u16string statusText = u"(never set)";
  std::optional<ProgressFigures> progress;
};

class FakeDesktop final : public Pickers,
                          public Messages,
                          public Clipboard,
                          public Shell,
                          public SettingsStore,
                          public SignatureChecks,
                          public OriginReads,
                          public ProgressTimer,
                          public Frame {
 public:
  std::vector<std::u16string> PickFiles(const std::u16string& title,
                                        const std::vector<FileFilter>& filters) override {
    pickerTitle = title;
    pickerFilters = filters;
    if (whilePickerShows) whilePickerShows();
    return picked;
  }
  std::vector<std::u16string> PickFolder(const std::u16string& title) override {
    pickerTitle = title;
    return picked;
  }
  std::optional<SaveTarget> PickSaveTarget(const SaveRequest& request) override {
    saveRequests.push_back(request);
    if (whilePickerShows) whilePickerShows();
    return saveTarget;
  }
  int ShowTaskDialog(const TaskDialogSpec& spec) override {
    messages.push_back(spec);
    if (whileMessageShows) whileMessageShows();
    return answer;
  }
  uint32_t ClipboardSequence() override { return clipboardSequence; }
  std::optional<std::u16string> ReadClipboardText() override {
    ++clipboardReads;
    return clipboard;
  }
  void WriteClipboardText(const TextInParts& text) override {
    std::u16string& whole = clipboard.emplace();
    whole.reserve(text.likelySize);
    text.write([&](std::u16string_view part) { whole += part; });
    ++clipboardSequence;
  }
  void OpenAddress(const std::u16string& address) override { openedAddresses.push_back(address); }
  void OpenFolder(const std::u16string& folder) override { openedFolders.push_back(folder); }
  void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) override {
    prompts.emplace_back(folder, command);
  }
  // The window handles messages while the file manager answers.
  void ShowInFolder(const std::u16string& path, const std::u16string& folder) override {
    if (whileFolderOpens) whileFolderOpens();
    shownInFolder.emplace_back(path, folder);
  }
  void ShowHashText(swr::AlgoMask mask, bool uppercase) override {
    hashTexts.emplace_back(mask, uppercase);
  }
  bool StartSignatureCheck(uint64_t rowId, const std::u16string& path) override {
    signatureChecks.emplace_back(rowId, path);
    return canCheckSignatures;
  }
  std::optional<swr::ZoneRecord> ReadOrigin(uint64_t rowId, const std::u16string& path) override {
    originReads.emplace_back(rowId, path);
    return origin;
  }
  std::vector<RowOrigin> TakeLateOrigins() override { return std::exchange(lateOrigins, {}); }
  std::optional<uint32_t> ReadDwordSetting(const std::u16string& name) override {
    if (swr::InjectedFault(swr::SystemCall::ReadSetting)) return std::nullopt;
    const auto found = dwordSettings.find(name);
    if (found == dwordSettings.end()) return std::nullopt;
    return found->second;
  }
  bool ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) override {
    if (swr::InjectedFault(swr::SystemCall::ReadSetting)) return false;
    const auto found = binarySettings.find(name);
    if (found == binarySettings.end() || found->second.size() != data.size()) return false;
    std::ranges::copy(found->second, data.begin());
    return true;
  }
  void WriteDwordSetting(const std::u16string& name, uint32_t value) override {
    if (swr::InjectedFault(swr::SystemCall::WriteSetting)) return;
    dwordSettings[name] = value;
    settingsWritten.push_back(name);
  }
  void WriteBinarySetting(const std::u16string& name, std::span<const uint8_t> data) override {
    if (swr::InjectedFault(swr::SystemCall::WriteSetting)) return;
    binarySettings[name] = {data.begin(), data.end()};
    settingsWritten.push_back(name);
  }
  // Simulates copying a text in another program.
  void Copy(const std::optional<std::u16string>& text) {
    clipboard = text;
    ++clipboardSequence;
  }

  void StartProgressTimer() override { ++timerStarts, timerRuns = true; }
  void StopProgressTimer() override { timerRuns = false; }
  void BeginWait() override { ++waits, waiting = true; }
  void EndWait() override { waiting = false; }
  void CloseWindow() override { closed = true; }

  std::vector<std::u16string> picked;
  std::u16string pickerTitle;
  std::vector<FileFilter> pickerFilters;
  std::vector<SaveRequest> saveRequests;
  std::optional<SaveTarget> saveTarget;
  std::function<void()> whilePickerShows;  // for opening or saving
  std::function<void()> whileFolderOpens;
  std::vector<TaskDialogSpec> messages;
  std::function<void()> whileMessageShows;
  int answer = CancelAnswer;
  std::vector<std::u16string> openedAddresses;
  std::vector<std::u16string> openedFolders;
  std::vector<std::pair<std::u16string, std::u16string>> prompts;
  std::vector<std::pair<std::u16string, std::u16string>> shownInFolder;
  std::vector<std::pair<swr::AlgoMask, bool>> hashTexts;
  std::vector<std::pair<uint64_t, std::u16string>> signatureChecks;
  bool canCheckSignatures = true;
  std::vector<std::pair<uint64_t, std::u16string>> originReads;
  std::optional<swr::ZoneRecord> origin = swr::ZoneRecord{};  // of each file; nothing when late
  std::vector<RowOrigin> lateOrigins;
  uint32_t clipboardSequence = 0;
  std::optional<std::u16string> clipboard;
  int clipboardReads = 0;
  std::map<std::u16string, uint32_t> dwordSettings;
  std::map<std::u16string, std::vector<uint8_t>> binarySettings;
  std::vector<std::u16string> settingsWritten;  // in the order of writing
  bool timerRuns = false;
  int timerStarts = 0;
  bool waiting = false;
  int waits = 0;
  bool closed = false;
};

// Keeps the jobs; the test removes them and supplies their results.
class FakeQueue final : public HashQueue {
 public:
  void Enqueue(HashJob job) override { jobs.push_back(std::move(job)); }
  void EnqueueAll(std::vector<HashJob> all) override {
    std::ranges::move(all, std::back_inserter(jobs));
  }
  void Remove(std::span<const uint64_t> rowIds) override {
    removed.insert(removed.end(), rowIds.begin(), rowIds.end());
    const RowIdSet ids(rowIds);
    std::erase_if(jobs, [&](const HashJob& job) { return ids.Contains(job.rowId); });
  }
  void CancelAll() override {
    ++cancels;
    jobs.clear();
  }
  WorkerSnapshot GetSnapshot() const override {
    WorkerSnapshot now = snapshot;
    now.active = now.active || !jobs.empty();
    return now;
  }

  std::deque<HashJob> jobs;
  std::vector<uint64_t> removed;
  int cancels = 0;
  WorkerSnapshot snapshot;  // reported in addition to the queue's own state
};

// The two fakes as the parts of the screen and the services of the desktop.
inline Screen ScreenOf(FakeView& view, FakeDesktop& desktop) {
  return {view, view, view, view, view, view, desktop, view, view, view, view, desktop};
}
inline Desktop DesktopOf(FakeDesktop& desktop, OriginReads& origins) {
  return {desktop, desktop, desktop, desktop, desktop, desktop, origins};
}
inline Desktop DesktopOf(FakeDesktop& desktop) { return DesktopOf(desktop, desktop); }

// A window with fakes, and these fakes.
struct FakeParts {
  FakeView view;
  FakeDesktop desktop;
  FakeQueue queue;
  FakeIntake fileIntake;
  FakeInstallSystem installSystem;
  Installation installation{installSystem};
  MainWindow main{ScreenOf(view, desktop), DesktopOf(desktop), queue, fileIntake, installation};
};

// The same with the rows and flows as members.
struct FakeWindow : FakeParts, WindowFlows {
  FakeWindow() : WindowFlows(main) {
    view.onExpectedEdited = [this] { expected.OnEdited(); };
    main.Start();
  }
  FakeWindow(const FakeWindow&) = delete;
  FakeWindow& operator=(const FakeWindow&) = delete;

  // Adds a row for this path without accessing the file system and without queueing it. Tests may
  // change everything but its path through the reference, which flows can't; call Recount
  // afterwards to update the table's counters.
  Row& AddRow(const std::u16string& path, uint64_t size = 100) {
    Row row;
    row.path = path;
    row.size = size;
    rows.Append(std::move(row));
    view.SetRowCount(rows.Size());
    return RowAt(rows.Size() - 1);
  }
  Row& RowAt(size_t index) { return const_cast<Row&>(rows[index]); }
  void Recount() {
    for (size_t i = 0; i < rows.Size(); ++i) rows.UpdateAt(i, [](RowState&) {});
    std::vector<size_t> order(rows.Size());
    std::iota(order.begin(), order.end(), size_t{0});
    rows.Reorder(order);
  }

  // Lets up to `most` further files arrive from a held intake; the end of a request also counts as
  // one.
  void LookUpFiles(size_t most = SIZE_MAX) {
    fileIntake.Release(most);
    while (arrivals.TakeSome(std::chrono::hours(1))) {
    }
  }

  // Simulates a click: a box changes before it sends its message.
  void ClickBox(const AlgoBox& box) {
    view.checkedBoxes ^= swr::MaskOf(box.algo);
    commands.Run(box.control);
  }

  // Removes the front job from the queue and reports it as finished: with a digest of the right
  // length for each algorithm, unless `outcome` is given.
  void Finish(swr::HashOutcome outcome = {}) {
    const HashJob job = queue.jobs.at(0);  // throws when nothing was queued
    queue.jobs.pop_front();
    Report(job, std::move(outcome));
  }
  void Report(const HashJob& job, swr::HashOutcome outcome) {
    std::vector<std::pair<HashJob, swr::HashOutcome>> results;
    results.emplace_back(job, std::move(outcome));
    ReportAll(std::move(results));
  }
  // Several results at once.
  void ReportAll(std::vector<std::pair<HashJob, swr::HashOutcome>> results) {
    std::vector<std::unique_ptr<FinishedJob>> finished;
    for (auto& [job, outcome] : results) {
      auto taken = std::make_unique<FinishedJob>();
      taken->rowId = job.rowId;
      taken->mask = job.mask;
      if (outcome.error == 0 && !outcome.cancelled) FillIn(job, outcome);
      taken->outcome = std::move(outcome);
      finished.push_back(std::move(taken));
    }
    intake.Take(std::move(finished));
  }

  // Hashes the files of all jobs in the queue, and of the jobs that are queued as a result.
  void HashQueuedFiles() {
    while (!queue.jobs.empty()) {
      const HashJob job = queue.jobs.front();
      queue.jobs.pop_front();
      Report(job, swr::HashFile(swr::ToLongPath(job.path->Text()), job.mask, {}));
    }
  }

  ResultLine Result() const { return {view.resultLine, view.resultKind}; }
  std::u16string StatusCell(size_t row) const {
    return cells.TextOf(row, columns.Defs().size() - 1);
  }

 private:
  // Values that tests do not care about.
  static void FillIn(const HashJob& job, swr::HashOutcome& outcome) {
    for (const swr::AlgoId id : swr::IdsFromMask(job.mask)) {
      swr::DigestSlot& slot = outcome.digests.Make(swr::IndexOf(id));
      if (slot.present) continue;
      slot.present = true;
      slot.length = static_cast<uint8_t>(swr::GetAlgo(id).digestSize);
      if (slot.bytes[0] == 0) slot.bytes.fill(static_cast<uint8_t>(swr::IndexOf(id) + 1));
    }
    if (outcome.bytesRead == 0) outcome.bytesRead = job.size;
  }
};

// What a digest column shows for the digests that FakeWindow::Finish makes.
inline std::u16string FakeDigestText(swr::AlgoId id) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  const size_t value = swr::IndexOf(id) + 1;
  std::u16string text;
  for (uint32_t i = 0; i < swr::GetAlgo(id).digestSize; ++i) {
    text += digits[value >> 4];
    text += digits[value & 15];
  }
  return text;
}

}  // namespace app::testing
