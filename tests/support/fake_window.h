// Stand-ins for the screen, the desktop and the worker. They record what the window's decisions ask
// of them, and do only what the test says.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "app/desktop/desktop.h"
#include "app/window/algo_boxes.h"
#include "app/window/main_window.h"
#include "app/window/result_line.h"
#include "app/window/view.h"
#include "app/worker/hash_queue.h"
#include "swr/hash/hash_file.h"
#include "swr/paths/path_forms.h"
#include "swr/system/fault_injection.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_install_system.h"

namespace app {

// How GoogleTest prints what a comparison found.
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

class FakeView final : public View {
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
    if (!takesSelection) return;
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
  std::optional<ListMenuChoice> ChooseListCommand(const ListMenu& menu,
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
  int listPaints = 0;  // of the whole list, for whatever reason
  std::vector<size_t> selected;
  bool takesSelection = true;
  std::optional<size_t> focused;
  std::optional<size_t> scrolledTo;
  bool editHasFocus = false;
  int pastesIntoEdit = 0;
  int copiesFromEdit = 0;
  std::optional<ListMenu> listMenu;
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

class FakeDesktop final : public Desktop {
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
  void WriteClipboardText(const std::u16string& text) override {
    clipboard = text;
    ++clipboardSequence;
  }
  void OpenAddress(const std::u16string& address) override { openedAddresses.push_back(address); }
  void OpenFolder(const std::u16string& folder) override { openedFolders.push_back(folder); }
  void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) override {
    prompts.emplace_back(folder, command);
  }
  // The file manager answers while the window goes on with its messages.
  void ShowInFolder(const std::u16string& path, const std::u16string& folder) override {
    if (whileFolderOpens) whileFolderOpens();
    shownInFolder.emplace_back(path, folder);
  }
  void ShowHashText(swr::AlgoMask mask, bool uppercase) override {
    hashTexts.emplace_back(mask, uppercase);
  }
  void StartSignatureCheck(uint64_t rowId, const std::u16string& path) override {
    signatureChecks.emplace_back(rowId, path);
  }
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
  // As when the user copies a text in some program.
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
  std::function<void()> whilePickerShows;  // of files, or of where to save
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

// Keeps the jobs; the test takes them out and says how they ended.
class FakeQueue final : public HashQueue {
 public:
  void Enqueue(HashJob job) override { jobs.push_back(std::move(job)); }
  void EnqueueAll(std::vector<HashJob> all) override {
    std::ranges::move(all, std::back_inserter(jobs));
  }
  void Remove(std::span<const uint64_t> rowIds) override {
    removed.insert(removed.end(), rowIds.begin(), rowIds.end());
    const std::unordered_set<uint64_t> ids(rowIds.begin(), rowIds.end());
    std::erase_if(jobs, [&](const HashJob& job) { return ids.contains(job.rowId); });
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
  WorkerSnapshot snapshot;  // what is told beside the queue's own state
};

// A window on fakes.
struct FakeWindow {
  FakeWindow() {
    view.onExpectedEdited = [this] { main.OnExpectedEdited(); };
    main.Start();
  }

  // Adds a row of this path without touching the file system, not queued.
  ListRow& AddRow(const std::u16string& path, uint64_t size = 100) {
    auto row = std::make_unique<ListRow>();
    row->id = nextId++;
    row->path = path;
    row->name = path;
    row->size = size;
    main.rows.push_back(std::move(row));
    main.RebuildRowIndex();
    view.SetRowCount(main.rows.size());
    return *main.rows.back();
  }

  // As the user does it: a box changes before it says so.
  void ClickBox(const AlgoBox& box) {
    view.checkedBoxes ^= swr::MaskOf(box.algo);
    main.OnCommand(box.control);
  }

  // Takes the front job out of the queue and reports it: with a digest of the right length for each
  // algorithm, unless `outcome` says something else.
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
    std::vector<std::unique_ptr<ResultMessage>> messages;
    for (auto& [job, outcome] : results) {
      auto message = std::make_unique<ResultMessage>();
      message->rowId = job.rowId;
      message->mask = job.mask;
      if (outcome.error == 0 && !outcome.cancelled) FillIn(job, outcome);
      message->outcome = std::move(outcome);
      messages.push_back(std::move(message));
    }
    main.OnHashResults(std::move(messages));
  }

  // Hashes the files of all jobs in the queue, and of those that this leads to.
  void HashQueuedFiles() {
    while (!queue.jobs.empty()) {
      const HashJob job = queue.jobs.front();
      queue.jobs.pop_front();
      Report(job, swr::HashFile(swr::ToLongPath(job.path), job.mask, {}));
    }
  }

  ResultLine Result() const { return {view.resultLine, view.resultKind}; }
  std::u16string StatusCell(size_t row) const {
    return main.CellText(row, main.columns.size() - 1);
  }

  FakeView view;
  FakeDesktop desktop;
  FakeQueue queue;
  FakeInstallSystem installSystem;
  Installation installation{installSystem};
  MainWindow main{view, desktop, queue, installation};
  uint64_t nextId = 1001;  // beyond what the window itself gives

 private:
  // What the test does not say of a result.
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
