#include "app/window/main_dialog_win.h"

#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "app/desktop/clipboard_win.h"
#include "app/desktop/desktop.h"
#include "app/desktop/dpi_win.h"
#include "app/desktop/file_pickers_win.h"
#include "app/desktop/gdi_handles_win.h"
#include "app/desktop/registry_settings_win.h"
#include "app/desktop/shell_win.h"
#include "app/desktop/signature_thread_win.h"
#include "app/desktop/task_dialog_win.h"
#include "app/dialogs/hash_text_dialog_win.h"
#include "app/install/install_system_win.h"
#include "app/instance/instance_win.h"
#include "app/window/dialog_view_win.h"
#include "app/window/main_window.h"
#include "app/window/show_command.h"
#include "app/window/toolbar_win.h"
#include "app/worker/result_queue.h"
#include "app/worker/worker.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr UINT WM_APP_DPI_RELAYOUT = 32769;
constexpr UINT WM_APP_SIGNATURE_RESULT = 32780;  // a SignatureMessage, to be taken over
constexpr UINT WM_APP_HASH_RESULT = 32778;       // results wait in the queue
constexpr UINT WM_APP_HASH_PROGRESS = 32779;     // bytes moved on

static_assert(ShowNormalCommand == SW_SHOWNORMAL && ShowMaximizedCommand == SW_SHOWMAXIMIZED &&
              ShowCommand == SW_SHOW && ShowDefaultCommand == SW_SHOWDEFAULT);

constexpr UINT_PTR IDT_PROGRESS = 1;
constexpr UINT ProgressInterval = 200;  // ms
// While results come thick, they are taken at this pace. A timer's messages stand behind the user's
// input, so the window stays at hand however fast files finish.
constexpr UINT_PTR IDT_RESULTS = 2;
constexpr UINT ResultsInterval = 15;  // ms
constexpr size_t ResultsAtOnce = 1000;
constexpr ULONGLONG LongestIntake = 35;  // milliseconds

bool IsHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// Everything behind one main dialog. Made and destroyed by the dialog's own messages.
class MainDialog final : public Desktop {
 public:
  // An exception must not unwind through the system's frames, which know nothing of it: it ends the
  // program here.
  static INT_PTR CALLBACK MainDialogProc(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept;

  MainWindow& Flows() { return *main_; }

  std::vector<std::u16string> PickFiles(const std::u16string& title,
                                        const std::vector<FileFilter>& filters) override {
    return PickPaths(window_, title, PickKind::Files, filters);
  }
  std::vector<std::u16string> PickFolder(const std::u16string& title) override {
    return PickPaths(window_, title, PickKind::Folder, {});
  }
  std::optional<SaveTarget> PickSaveTarget(const SaveRequest& request) override {
    return PickTarget(window_, request);
  }
  int ShowTaskDialog(const TaskDialogSpec& spec) override {
    return app::ShowTaskDialog(window_, spec);
  }
  uint32_t ClipboardSequence() override { return GetClipboardSequenceNumber(); }
  std::optional<std::u16string> ReadClipboardText() override {
    return app::ReadClipboardText(window_);
  }
  void WriteClipboardText(const std::u16string& text) override {
    app::WriteClipboardText(window_, text);
  }
  void OpenAddress(const std::u16string& address) override { OpenWithShell(address); }
  void OpenFolder(const std::u16string& folder) override { OpenWithShell(folder); }
  void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) override {
    app::OpenCommandPrompt(window_, folder, command);
  }
  void ShowInFolder(const std::u16string& path, const std::u16string& folder) override {
    ShowInFileManager(path, folder);
  }
  void ShowHashText(swr::AlgoMask mask, bool uppercase) override {
    ShowHashTextDialog(window_, mask, uppercase);
  }
  void StartSignatureCheck(uint64_t rowId, const std::u16string& path) override {
    StartSignatureThread(window_, WM_APP_SIGNATURE_RESULT, rowId, path);
  }
  std::optional<uint32_t> ReadDwordSetting(const std::u16string& name) override {
    return ReadRegistryDword(name);
  }
  bool ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) override {
    return ReadRegistryBinary(name, data);
  }
  void WriteDwordSetting(const std::u16string& name, uint32_t value) override {
    WriteRegistryDword(name, value);
  }
  void WriteBinarySetting(const std::u16string& name, std::span<const uint8_t> data) override {
    WriteRegistryBinary(name, data);
  }
  void StartProgressTimer() override { SetTimer(window_, IDT_PROGRESS, ProgressInterval, nullptr); }
  void StopProgressTimer() override { KillTimer(window_, IDT_PROGRESS); }
  void BeginWait() override { oldCursor_ = SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }
  void EndWait() override { SetCursor(oldCursor_); }
  void CloseWindow() override { DestroyWindow(window_); }

 private:
  using Handler = INT_PTR (MainDialog::*)(WPARAM, LPARAM);
  struct MessageEntry {
    UINT message;
    Handler handler;
  };
  static const MessageEntry messageTable[];

  INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  void Initialize();
  void TakeResults();

  INT_PTR OnDestroy(WPARAM, LPARAM);
  INT_PTR OnSize(WPARAM, LPARAM);
  INT_PTR OnClose(WPARAM, LPARAM);
  INT_PTR OnGetMinMaxInfo(WPARAM, LPARAM lParam);
  INT_PTR OnDrawItem(WPARAM wParam, LPARAM lParam);
  INT_PTR OnNotify(WPARAM, LPARAM lParam);
  INT_PTR OnListNotify(NMHDR& header);
  INT_PTR OnLinkNotify(const NMHDR& header);
  LONG_PTR FindItem(const NMLVFINDITEMW& request) const;
  INT_PTR OnCopyData(WPARAM, LPARAM lParam);
  INT_PTR OnCommand(WPARAM wParam, LPARAM);
  INT_PTR OnTimer(WPARAM wParam, LPARAM);
  INT_PTR OnDropFiles(WPARAM wParam, LPARAM);
  INT_PTR OnDpiChanged(WPARAM wParam, LPARAM);
  INT_PTR OnDpiRelayout(WPARAM, LPARAM);
  INT_PTR OnSettingChange(WPARAM, LPARAM);
  INT_PTR OnActivate(WPARAM wParam, LPARAM);
  INT_PTR OnContextMenu(WPARAM wParam, LPARAM lParam);
  INT_PTR OnResultsWait(WPARAM, LPARAM);
  INT_PTR OnBytesMoved(WPARAM, LPARAM);
  INT_PTR OnSignatureResult(WPARAM, LPARAM lParam);

  HWND window_ = nullptr;
  int dpi_ = 96;
  bool highContrast_ = false;
  UINT taskbarMessage_ = 0;
  HCURSOR oldCursor_ = nullptr;
  Icon largeIcon_;
  Icon smallIcon_;
  DialogView view_;
  Toolbar toolbar_;
  std::optional<ResultQueue> results_;
  std::optional<Worker> worker_;
  WindowsInstallSystem installSystem_;
  Installation installation_{installSystem_};
  std::optional<MainWindow> main_;
};

const MainDialog::MessageEntry MainDialog::messageTable[] = {
    {WM_DESTROY, &MainDialog::OnDestroy},
    {WM_SIZE, &MainDialog::OnSize},
    {WM_CLOSE, &MainDialog::OnClose},
    {WM_GETMINMAXINFO, &MainDialog::OnGetMinMaxInfo},
    {WM_DRAWITEM, &MainDialog::OnDrawItem},
    {WM_NOTIFY, &MainDialog::OnNotify},
    {WM_COMMAND, &MainDialog::OnCommand},
    {WM_TIMER, &MainDialog::OnTimer},
    {WM_DROPFILES, &MainDialog::OnDropFiles},
    {WM_COPYDATA, &MainDialog::OnCopyData},
    {WM_DPICHANGED, &MainDialog::OnDpiChanged},
    {WM_APP_DPI_RELAYOUT, &MainDialog::OnDpiRelayout},
    {WM_SETTINGCHANGE, &MainDialog::OnSettingChange},
    {WM_ACTIVATE, &MainDialog::OnActivate},
    {WM_CONTEXTMENU, &MainDialog::OnContextMenu},
    {WM_APP_HASH_RESULT, &MainDialog::OnResultsWait},
    {WM_APP_SIGNATURE_RESULT, &MainDialog::OnSignatureResult},
    {WM_APP_HASH_PROGRESS, &MainDialog::OnBytesMoved},
};

INT_PTR CALLBACK MainDialog::MainDialogProc(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) {
    auto* dialog = reinterpret_cast<MainDialog*>(lParam);
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    dialog->window_ = window;
    dialog->Initialize();
    return TRUE;
  }
  auto* dialog = reinterpret_cast<MainDialog*>(GetWindowLongPtrW(window, DWLP_USER));
  // Some messages come before the first one that brings the object.
  return dialog == nullptr ? FALSE : dialog->Dispatch(message, wParam, lParam);
}

INT_PTR MainDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == taskbarMessage_ && taskbarMessage_ != 0) {
    view_.taskbar.Connect(window_);
    return TRUE;
  }
  for (const MessageEntry& entry : messageTable) {
    if (entry.message == message) return (this->*entry.handler)(wParam, lParam);
  }
  return FALSE;
}

void MainDialog::Initialize() {
  dpi_ = GetDpi(window_);
  results_.emplace(ResultQueue::Announcements{
      .results = [this] { return PostMessageW(window_, WM_APP_HASH_RESULT, 0, 0) != FALSE; },
      .progress = [this] { return PostMessageW(window_, WM_APP_HASH_PROGRESS, 0, 0) != FALSE; }});
  worker_.emplace(*results_);
  main_.emplace(view_, *this, *worker_, installation_);
  taskbarMessage_ = RegisterWindowMessageW(L"TaskbarButtonCreated");
  PublishMainWindow(window_);
  main_->ReadSettings();
  highContrast_ = IsHighContrast();

  largeIcon_ = LoadScaledIcon(IDI_APP, GetSystemMetrics(SM_CXICON));
  smallIcon_ = LoadScaledIcon(IDI_APP, GetSystemMetrics(SM_CXSMICON));
  SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeIcon_.Get()));
  SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.Get()));

  view_.Attach(window_, dpi_);
  UINT tabStop = 64;
  SendDlgItemMessageW(window_, IDC_DETAILS, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
  SendDlgItemMessageW(
      window_, IDC_EXPECTED, EM_SETCUEBANNER, 1,
      reinterpret_cast<LPARAM>(L"Paste the hash from the download page to compare"));
  toolbar_.Create(window_, dpi_);

  view_.CaptureLayout();
  main_->RestorePlacement();
  main_->Start();
  view_.ApplyLayout();
}

INT_PTR MainDialog::OnDestroy(WPARAM, LPARAM) {
  main_->WriteSettings();
  toolbar_.DestroyButtonImages();
  worker_.reset();
  view_.taskbar.Release();
  PostQuitMessage(0);
  return TRUE;
}

INT_PTR MainDialog::OnSize(WPARAM, LPARAM) {
  view_.ApplyLayout();
  return TRUE;
}

INT_PTR MainDialog::OnClose(WPARAM, LPARAM) {
  DestroyWindow(window_);
  return TRUE;
}

INT_PTR MainDialog::OnGetMinMaxInfo(WPARAM, LPARAM lParam) {
  // The window is not to become smaller than it was designed.
  const SIZE smallest = view_.SmallestSize();
  if (smallest.cx < 1) return FALSE;
  reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
  return TRUE;
}

INT_PTR MainDialog::OnDrawItem(WPARAM wParam, LPARAM lParam) {
  if (wParam != IDC_RESULT) return FALSE;
  view_.result.Draw(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam), highContrast_);
  return TRUE;
}

INT_PTR MainDialog::OnNotify(WPARAM, LPARAM lParam) {
  auto* header = reinterpret_cast<NMHDR*>(lParam);
  if (header->code == TBN_GETINFOTIPW) {
    Toolbar::FillTip(*reinterpret_cast<NMTBGETINFOTIPW*>(lParam));
    return TRUE;
  }
  if (header->idFrom == IDC_BANNER || header->idFrom == IDC_LINKS) return OnLinkNotify(*header);
  return header->idFrom == IDC_LIST ? OnListNotify(*header) : FALSE;
}

INT_PTR MainDialog::OnLinkNotify(const NMHDR& header) {
  if (header.code != NM_CLICK && header.code != NM_RETURN) return FALSE;
  const std::u16string link = swr::FromWide(reinterpret_cast<const NMLINK&>(header).item.szID);
  if (header.idFrom == IDC_BANNER) {
    main_->OnBannerLink(link);
  } else {
    main_->OnCommand(link == u"cli" ? ID_CLI_TOOL : ID_ABOUT);
  }
  return TRUE;
}

INT_PTR MainDialog::OnListNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW: {
      const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
      if ((item.mask & LVIF_TEXT) != 0 && item.iItem >= 0 && item.iSubItem >= 0) {
        ListControl::FillText(item, main_->CellText(static_cast<size_t>(item.iItem),
                                                    static_cast<size_t>(item.iSubItem)));
      }
      return TRUE;
    }
    case LVN_COLUMNCLICK:
      main_->SortByColumn(static_cast<size_t>(reinterpret_cast<NMLISTVIEW&>(header).iSubItem));
      return TRUE;
    case LVN_KEYDOWN:
      if (reinterpret_cast<NMLVKEYDOWN&>(header).wVKey == VK_DELETE) main_->OnCommand(ID_REMOVE);
      return TRUE;
    case LVN_ITEMCHANGED:
      if ((reinterpret_cast<NMLISTVIEW&>(header).uChanged & LVIF_STATE) != 0) {
        main_->RefreshDetails();
      }
      return TRUE;
    case LVN_ODSTATECHANGED:
      main_->RefreshDetails();
      return TRUE;
    case LVN_ODFINDITEMW:
      SetWindowLongPtrW(window_, DWLP_MSGRESULT,
                        FindItem(reinterpret_cast<const NMLVFINDITEMW&>(header)));
      return TRUE;
    case LVN_GETEMPTYMARKUP:
      ListControl::FillEmptyMarkup(reinterpret_cast<NMLVEMPTYMARKUP&>(header));
      SetWindowLongPtrW(window_, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case NM_CUSTOMDRAW:
      SetWindowLongPtrW(window_, DWLP_MSGRESULT,
                        view_.list.Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(header), [&](size_t row) {
                          return highContrast_ ? RowTint::None : main_->TintOf(row);
                        }));
      return TRUE;
    default:
      return FALSE;
  }
}

// The row that the list looks for, mostly because letters were typed; -1 for none.
LONG_PTR MainDialog::FindItem(const NMLVFINDITEMW& request) const {
  constexpr UINT substring = 0x0004;  // LVFI_SUBSTRING, which the headers lack; the same as PARTIAL
  constexpr UINT byBeginning = LVFI_PARTIAL | substring;
  const LVFINDINFOW& wanted = request.lvfi;
  if ((wanted.flags & (LVFI_STRING | byBeginning)) == 0 || wanted.psz == nullptr) return -1;
  const std::optional<size_t> found = main_->FindRowNamed(
      swr::FromWide(wanted.psz), static_cast<size_t>(std::max(request.iStart, 0)),
      (wanted.flags & byBeginning) == 0);
  return found ? static_cast<LONG_PTR>(*found) : -1;
}

INT_PTR MainDialog::OnCommand(WPARAM wParam, LPARAM) {
  // Of an accelerator the high word is 1; of the controls that give commands only a click counts.
  const uint32_t id = LOWORD(wParam);
  if (id == IDC_EXPECTED) {
    if (HIWORD(wParam) == EN_CHANGE) main_->OnExpectedEdited();
    return TRUE;
  }
  const bool isControl = id < ID_ADD_FILES;
  if (isControl && HIWORD(wParam) != BN_CLICKED) return TRUE;
  main_->OnCommand(id);
  return TRUE;
}

INT_PTR MainDialog::OnTimer(WPARAM wParam, LPARAM) {
  // The tick takes results in too: their announcement, or the timer of their own, can fail.
  if (wParam == IDT_RESULTS || wParam == IDT_PROGRESS) TakeResults();
  if (wParam == IDT_PROGRESS) main_->OnProgressTimer();
  return TRUE;
}

INT_PTR MainDialog::OnResultsWait(WPARAM, LPARAM) {
  // First, for a message can stand in front of the window before the intake ends, and what comes
  // meanwhile is to be taken in.
  SetTimer(window_, IDT_RESULTS, ResultsInterval, nullptr);
  TakeResults();
  return TRUE;
}

// A folder of small files is hashed before it is walked to its end, and its results have gathered.
// The user is not to wait for all of them.
void MainDialog::TakeResults() {
  const ULONGLONG start = GetTickCount64();
  bool moreGathered = true;
  while (moreGathered && GetTickCount64() - start < LongestIntake) {
    std::vector<std::unique_ptr<ResultMessage>> results = results_->Take(ResultsAtOnce);
    if (results.empty()) KillTimer(window_, IDT_RESULTS);
    moreGathered = results.size() == ResultsAtOnce;
    if (!results.empty()) main_->OnHashResults(std::move(results));
  }
}

INT_PTR MainDialog::OnBytesMoved(WPARAM, LPARAM) {
  worker_->AcknowledgeProgress();
  return TRUE;
}

INT_PTR MainDialog::OnSignatureResult(WPARAM, LPARAM lParam) {
  const std::unique_ptr<SignatureMessage> message(reinterpret_cast<SignatureMessage*>(lParam));
  main_->OnSignatureResult(message->rowId, message->result);
  return TRUE;
}

INT_PTR MainDialog::OnDropFiles(WPARAM wParam, LPARAM) {
  const auto drop = reinterpret_cast<HDROP>(wParam);
  const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  std::vector<std::u16string> paths;
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(DragQueryFileW(drop, i, nullptr, 0), L'\0');
    DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1);
    paths.push_back(swr::FromWide(path));
  }
  DragFinish(drop);
  main_->AddPaths(paths);
  return TRUE;
}

// Comes from another process, so nothing about it is taken for granted. The sender waits.
INT_PTR MainDialog::OnCopyData(WPARAM, LPARAM lParam) {
  const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
  const size_t size = data.lpData == nullptr ? 0 : data.cbData;
  const auto paths = ReadHandOver(data.dwData, {static_cast<const std::byte*>(data.lpData), size});
  if (!paths) return TRUE;
  if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
  SetForegroundWindow(window_);
  main_->AddPaths(*paths);
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, 1);
  return TRUE;
}

INT_PTR MainDialog::OnDpiChanged(WPARAM wParam, LPARAM) {
  const int dpi = HIWORD(wParam);
  view_.ChangeDpi(dpi);
  dpi_ = dpi;
  // Behind the platform's own move to the new size, which a result of false lets go ahead.
  PostMessageW(window_, WM_APP_DPI_RELAYOUT, 0, 0);
  return FALSE;
}

INT_PTR MainDialog::OnDpiRelayout(WPARAM, LPARAM) {
  view_.result.ChangeDpi(dpi_);
  toolbar_.LoadImages(dpi_);
  toolbar_.Position();
  view_.CaptureLayout();
  return OnSize(0, 0);
}

INT_PTR MainDialog::OnSettingChange(WPARAM, LPARAM) {
  highContrast_ = IsHighContrast();
  InvalidateRect(GetDlgItem(window_, IDC_RESULT), nullptr, TRUE);
  view_.RedrawRows();
  return FALSE;
}

// The dialog's own handling of the activation goes on: it keeps the focus.
INT_PTR MainDialog::OnActivate(WPARAM wParam, LPARAM) {
  if (LOWORD(wParam) != WA_INACTIVE) main_->CheckClipboard();
  return FALSE;
}

INT_PTR MainDialog::OnContextMenu(WPARAM wParam, LPARAM lParam) {
  if (reinterpret_cast<HWND>(wParam) != GetDlgItem(window_, IDC_LIST)) return FALSE;
  const ScreenPoint point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  // From the keyboard it comes without a place, which is said by two coordinates of -1.
  std::optional<ScreenPoint> place;
  if (point.x != -1 || point.y != -1) place = point;
  main_->ShowListContextMenu(place);
  return TRUE;
}

}  // namespace

int RunMainDialog(HINSTANCE instance, int showCommand, const std::vector<std::u16string>& paths) {
  MainDialog dialog;
  const HWND window =
      CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_MAIN), nullptr, MainDialog::MainDialogProc,
                         reinterpret_cast<LPARAM>(&dialog));
  if (window == nullptr) return 1;
  ShowWindow(window, StartShowCommand(showCommand, dialog.Flows().startMaximized));
  if (!paths.empty()) dialog.Flows().AddPaths(paths);
  const HACCEL accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));

  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (TranslateAcceleratorW(window, accelerators, &message) != 0) continue;
    if (IsDialogMessageW(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace app
