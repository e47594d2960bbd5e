#include "app/window/main_dialog_win.h"

#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "app/desktop/windows_desktop_win.h"
#include "app/flows/type_ahead.h"
#include "app/install/install_system_win.h"
#include "app/instance/instance_win.h"
#include "app/screen/link_ids.h"
#include "app/system/dpi_win.h"
#include "app/system/icons_win.h"
#include "app/window/finished_job_pump_win.h"
#include "app/window/found_files_pump_win.h"
#include "app/window/main_screen_win.h"
#include "app/window/main_window.h"
#include "app/window/show_command.h"
#include "app/window/window_messages_win.h"
#include "app/worker/worker.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

static_assert(ShowNormalCommand == SW_SHOWNORMAL && ShowMaximizedCommand == SW_SHOWMAXIMIZED &&
              ShowCommand == SW_SHOW && ShowDefaultCommand == SW_SHOWDEFAULT);

bool IsHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// The main dialog and everything it owns. Each message becomes one call of a flow or of the screen.
class MainDialog {
 public:
  // noexcept: an exception must not unwind through the system's stack frames, so it ends the
  // program here.
  static INT_PTR CALLBACK MainDialogProc(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept;

  bool StartsMaximized() const { return startsMaximized_; }
  void AddPaths(const std::vector<std::u16string>& paths) { main_->GetAdding().AddPaths(paths); }

 private:
  using Handler = INT_PTR (MainDialog::*)(WPARAM, LPARAM);
  struct MessageEntry {
    UINT message;
    Handler handler;
  };
  static const MessageEntry messageTable[];

  INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  void Initialize(HWND window);

  INT_PTR OnDestroy(WPARAM, LPARAM);
  INT_PTR OnSize(WPARAM, LPARAM);
  INT_PTR OnClose(WPARAM, LPARAM);
  INT_PTR OnGetMinMaxInfo(WPARAM, LPARAM lParam);
  INT_PTR OnDrawItem(WPARAM wParam, LPARAM lParam);
  INT_PTR OnNotify(WPARAM, LPARAM lParam);
  INT_PTR OnListNotify(NMHDR& header);
  INT_PTR OnLinkNotify(const NMHDR& header);
  LONG_PTR FindItem(const NMLVFINDITEMW& request);
  INT_PTR OnCopyData(WPARAM, LPARAM lParam);
  INT_PTR OnCommand(WPARAM wParam, LPARAM);
  INT_PTR OnTimer(WPARAM wParam, LPARAM);
  INT_PTR OnDropFiles(WPARAM wParam, LPARAM);
  INT_PTR OnDpiChanged(WPARAM wParam, LPARAM);
  INT_PTR OnDpiRelayout(WPARAM, LPARAM);
  INT_PTR OnSettingChange(WPARAM, LPARAM);
  INT_PTR OnActivate(WPARAM wParam, LPARAM);
  INT_PTR OnContextMenu(WPARAM wParam, LPARAM lParam);
  INT_PTR OnJobsFinished(WPARAM, LPARAM);
  INT_PTR OnFilesFound(WPARAM, LPARAM);
  INT_PTR OnHashProgress(WPARAM, LPARAM);
  INT_PTR OnSignatureResult(WPARAM, LPARAM lParam);
  INT_PTR OnOriginsRead(WPARAM, LPARAM);

  HWND window_ = nullptr;
  bool highContrast_ = false;
  bool startsMaximized_ = false;
  UINT taskbarMessage_ = 0;
  Icon largeIcon_;
  Icon smallIcon_;
  MainScreen screen_;
  WindowsDesktop desktop_;
  WindowsInstallSystem installSystem_;
  Installation installation_{installSystem_};
  FinishedJobPump finishedJobs_;
  FoundFilesPump foundFiles_;
  // Destroyed after the worker, which refers to paths of rows.
  std::optional<MainWindow> main_;
  std::optional<Worker> worker_;
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
    {WM_APP_JOBS_FINISHED, &MainDialog::OnJobsFinished},
    {WM_APP_FILES_FOUND, &MainDialog::OnFilesFound},
    {WM_APP_SIGNATURE_RESULT, &MainDialog::OnSignatureResult},
    {WM_APP_ORIGINS_READ, &MainDialog::OnOriginsRead},
    {WM_APP_HASH_PROGRESS, &MainDialog::OnHashProgress},
};

INT_PTR CALLBACK MainDialog::MainDialogProc(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) {
    auto* dialog = reinterpret_cast<MainDialog*>(lParam);
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    dialog->Initialize(window);
    return TRUE;
  }
  auto* dialog = reinterpret_cast<MainDialog*>(GetWindowLongPtrW(window, DWLP_USER));
  // Some messages arrive before WM_INITDIALOG, which passes the object.
  return dialog == nullptr ? FALSE : dialog->Dispatch(message, wParam, lParam);
}

INT_PTR MainDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == taskbarMessage_ && taskbarMessage_ != 0) {
    screen_.status.ConnectTaskbar();
    return TRUE;
  }
  for (const MessageEntry& entry : messageTable) {
    if (entry.message == message) return (this->*entry.handler)(wParam, lParam);
  }
  return FALSE;
}

void MainDialog::Initialize(HWND window) {
  window_ = window;
  finishedJobs_.Attach(window);
  foundFiles_.Attach(window);
  desktop_.Attach(window, WM_APP_SIGNATURE_RESULT, WM_APP_ORIGINS_READ);
  worker_.emplace(finishedJobs_.Sink());
  main_.emplace(screen_.Parts(), desktop_.Services(), *worker_, foundFiles_.GetIntake(),
                installation_);
  taskbarMessage_ = RegisterWindowMessageW(L"TaskbarButtonCreated");
  PublishMainWindow(window);
  main_->GetSettings().Read();
  highContrast_ = IsHighContrast();

  largeIcon_ = LoadScaledIcon(IDI_APP, GetSystemMetrics(SM_CXICON));
  smallIcon_ = LoadScaledIcon(IDI_APP, GetSystemMetrics(SM_CXSMICON));
  SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeIcon_.Get()));
  SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.Get()));

  screen_.Attach(window, GetDpi(window));
  startsMaximized_ = main_->GetSettings().RestorePlacement();
  main_->Start();
  screen_.ApplyLayout();
}

INT_PTR MainDialog::OnDestroy(WPARAM, LPARAM) {
  main_->GetSettings().Write();
  screen_.ReleaseImages();
  foundFiles_.Stop();
  // A message box can be open, and the flow that shows it still uses the worker when it returns.
  worker_->CancelAll();
  screen_.status.ReleaseTaskbar();
  PostQuitMessage(0);
  return TRUE;
}

INT_PTR MainDialog::OnSize(WPARAM, LPARAM) {
  screen_.ApplyLayout();
  return TRUE;
}

INT_PTR MainDialog::OnClose(WPARAM, LPARAM) {
  DestroyWindow(window_);
  return TRUE;
}

INT_PTR MainDialog::OnGetMinMaxInfo(WPARAM, LPARAM lParam) {
  // The window cannot be made smaller than its dialog template.
  const SIZE smallest = screen_.frame.SmallestSize();
  if (smallest.cx < 1) return FALSE;
  reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
  return TRUE;
}

INT_PTR MainDialog::OnDrawItem(WPARAM wParam, LPARAM lParam) {
  if (wParam != IDC_RESULT) return FALSE;
  screen_.expected.DrawResult(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam), highContrast_);
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
    main_->GetBannerLinks().Follow(link);
  } else {
    main_->GetCommands().Run(link == CommandLineToolLink ? ID_CLI_TOOL : ID_ABOUT);
  }
  return TRUE;
}

INT_PTR MainDialog::OnListNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW: {
      const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
      if ((item.mask & LVIF_TEXT) != 0 && item.iItem >= 0 && item.iSubItem >= 0) {
        ListControl::FillText(item, main_->GetCells().TextOf(static_cast<size_t>(item.iItem),
                                                             static_cast<size_t>(item.iSubItem)));
      }
      return TRUE;
    }
    case LVN_COLUMNCLICK:
      main_->GetSorting().SortBy(
          static_cast<size_t>(reinterpret_cast<NMLISTVIEW&>(header).iSubItem));
      return TRUE;
    case LVN_KEYDOWN:
      if (reinterpret_cast<NMLVKEYDOWN&>(header).wVKey == VK_DELETE)
        main_->GetCommands().Run(ID_REMOVE);
      return TRUE;
    case LVN_ITEMCHANGED:
      if ((reinterpret_cast<NMLISTVIEW&>(header).uChanged & LVIF_STATE) != 0) {
        main_->GetDetails().Refresh();
      }
      return TRUE;
    case LVN_ODSTATECHANGED:
      main_->GetDetails().Refresh();
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
      SetWindowLongPtrW(
          window_, DWLP_MSGRESULT,
          screen_.list.Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(header), [&](size_t row) {
            return highContrast_ ? RowTint::None : main_->GetCells().TintOf(row);
          }));
      return TRUE;
    default:
      return FALSE;
  }
}

// The row that the list view searches for, usually because the user typed letters; -1 for none.
LONG_PTR MainDialog::FindItem(const NMLVFINDITEMW& request) {
  constexpr UINT substring = 0x0004;  // LVFI_SUBSTRING, which the headers lack; the same as PARTIAL
  constexpr UINT byBeginning = LVFI_PARTIAL | substring;
  const LVFINDINFOW& wanted = request.lvfi;
  if ((wanted.flags & (LVFI_STRING | byBeginning)) == 0 || wanted.psz == nullptr) return -1;
  const std::optional<size_t> found = FindRowNamed(main_->GetRows(), swr::FromWide(wanted.psz),
                                                   static_cast<size_t>(std::max(request.iStart, 0)),
                                                   (wanted.flags & byBeginning) == 0);
  return found ? static_cast<LONG_PTR>(*found) : -1;
}

INT_PTR MainDialog::OnCommand(WPARAM wParam, LPARAM) {
  // The high word is 1 for an accelerator. From controls, only a click is a command.
  const uint32_t id = LOWORD(wParam);
  if (id == IDC_EXPECTED) {
    if (HIWORD(wParam) == EN_CHANGE) main_->GetExpectedHash().OnEdited();
    return TRUE;
  }
  const bool isControl = id < ID_ADD_FILES;
  if (isControl && HIWORD(wParam) != BN_CLICKED) return TRUE;
  main_->GetCommands().Run(id);
  return TRUE;
}

INT_PTR MainDialog::OnTimer(WPARAM wParam, LPARAM) {
  // A progress tick takes found files and finished jobs too, because their announcements and their
  // own timers can fail.
  if (wParam == IDT_FOUND_FILES) foundFiles_.TakeSome(main_->GetFileArrivals());
  if (wParam == IDT_PROGRESS) foundFiles_.TakeFew(main_->GetFileArrivals());
  if (wParam == IDT_FINISHED_JOBS || wParam == IDT_PROGRESS) {
    finishedJobs_.TakeSome(main_->GetJobIntake());
  }
  if (wParam == IDT_PROGRESS) main_->GetJobIntake().OnTimer();
  return TRUE;
}

INT_PTR MainDialog::OnJobsFinished(WPARAM, LPARAM) {
  finishedJobs_.OnAnnounced(main_->GetJobIntake());
  return TRUE;
}

INT_PTR MainDialog::OnFilesFound(WPARAM, LPARAM) {
  foundFiles_.OnAnnounced(main_->GetFileArrivals());
  return TRUE;
}

INT_PTR MainDialog::OnHashProgress(WPARAM, LPARAM) {
  worker_->AcknowledgeProgress();
  return TRUE;
}

INT_PTR MainDialog::OnSignatureResult(WPARAM, LPARAM lParam) {
  const std::unique_ptr<SignatureMessage> message(reinterpret_cast<SignatureMessage*>(lParam));
  main_->GetDetails().OnSignatureResult(message->rowId, message->result);
  return TRUE;
}

INT_PTR MainDialog::OnOriginsRead(WPARAM, LPARAM) {
  main_->GetDetails().OnOriginsRead();
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
  AddPaths(paths);
  return TRUE;
}

// The message comes from another process, so nothing in it is trusted. The sender waits for the
// result.
INT_PTR MainDialog::OnCopyData(WPARAM, LPARAM lParam) {
  const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
  const size_t size = data.lpData == nullptr ? 0 : data.cbData;
  const auto paths = ReadHandOver(data.dwData, {static_cast<const std::byte*>(data.lpData), size});
  if (!paths) return TRUE;
  if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
  SetForegroundWindow(window_);
  AddPaths(*paths);
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, 1);
  return TRUE;
}

INT_PTR MainDialog::OnDpiChanged(WPARAM wParam, LPARAM) {
  const int dpi = HIWORD(wParam);
  screen_.ChangeDpi(dpi);
  // Handled after the system has moved the window to the new size, which the result FALSE allows.
  PostMessageW(window_, WM_APP_DPI_RELAYOUT, 0, 0);
  return FALSE;
}

INT_PTR MainDialog::OnDpiRelayout(WPARAM, LPARAM) {
  screen_.Relayout();
  return TRUE;
}

INT_PTR MainDialog::OnSettingChange(WPARAM, LPARAM) {
  highContrast_ = IsHighContrast();
  screen_.expected.RedrawResult();
  screen_.list.RedrawRows();
  return FALSE;
}

// FALSE lets the dialog handle the message as well, which restores the focus.
INT_PTR MainDialog::OnActivate(WPARAM wParam, LPARAM) {
  if (LOWORD(wParam) != WA_INACTIVE) main_->GetClipboardWatch().Check();
  return FALSE;
}

INT_PTR MainDialog::OnContextMenu(WPARAM wParam, LPARAM lParam) {
  if (reinterpret_cast<HWND>(wParam) != GetDlgItem(window_, IDC_LIST)) return FALSE;
  const ScreenPoint point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  // When the keyboard opens the menu, both coordinates are -1.
  std::optional<ScreenPoint> place;
  if (point.x != -1 || point.y != -1) place = point;
  main_->GetListMenu().Show(place);
  return TRUE;
}

}  // namespace

int RunMainDialog(HINSTANCE instance, int showCommand, const std::vector<std::u16string>& paths) {
  MainDialog dialog;
  const HWND window =
      CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_MAIN), nullptr, MainDialog::MainDialogProc,
                         reinterpret_cast<LPARAM>(&dialog));
  if (window == nullptr) return 1;
  ShowWindow(window, StartShowCommand(showCommand, dialog.StartsMaximized()));
  if (!paths.empty()) dialog.AddPaths(paths);
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
