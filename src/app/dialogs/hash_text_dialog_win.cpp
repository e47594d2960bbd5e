#include "app/dialogs/hash_text_dialog_win.h"

#include <array>
#include <initializer_list>
#include <string>

#include "app/desktop/clipboard_win.h"
#include "app/dialogs/hash_text.h"
#include "app/layout/control_layout_win.h"
#include "app/system/control_text_win.h"
#include "app/system/dpi_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr UINT WM_APP_HASHTEXT_RELAYOUT = 32768;

// The two text boxes share the added height, and the options between them move by half of it.
constexpr std::array<AnchoredControl, 9> controls = {{
    {IDC_HT_INPUT, Follow::Nothing, Follow::Nothing, Follow::All, Follow::Half},
    {IDC_HT_RESULT, Follow::Nothing, Follow::Half, Follow::All, Follow::All},
    {IDC_HT_COPY, Follow::All, Follow::All, Follow::All, Follow::All},
    {IDCANCEL, Follow::All, Follow::All, Follow::All, Follow::All},
    {IDC_HT_ENCODING_LABEL, Follow::Nothing, Follow::Half, Follow::Nothing, Follow::Half},
    {IDC_HT_ENCODING, Follow::Nothing, Follow::Half, Follow::Nothing, Follow::Half},
    {IDC_HT_LINEBREAKS_LABEL, Follow::Nothing, Follow::Half, Follow::Nothing, Follow::Half},
    {IDC_HT_LINEBREAKS, Follow::Nothing, Follow::Half, Follow::Nothing, Follow::Half},
    {IDC_HT_ADD_EOL, Follow::Nothing, Follow::Half, Follow::Nothing, Follow::Half},
}};

class HashTextDialog {
 public:
  HashTextDialog(swr::AlgoMask mask, bool uppercase) : mask_(mask), uppercase_(uppercase) {}

  // noexcept, like every procedure that the system calls: an exception must not leave it.
  static INT_PTR CALLBACK HashTextProc(HWND window, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept;

 private:
  void Initialize(HWND window);
  void FillList(int control, std::initializer_list<const wchar_t*> entries, int chosen) const;
  void RecomputeHashText() const;
  void Copy() const;
  void OnCommand(int control, int notification) const;
  void ChangeDpi(int dpi);
  HWND Control(int id) const { return GetDlgItem(window_, id); }

  HWND window_ = nullptr;
  swr::AlgoMask mask_;
  bool uppercase_;
  int dpi_ = 96;
  SIZE smallestSize_ = {};
  ControlLayout layout_{controls};
};

INT_PTR CALLBACK HashTextDialog::HashTextProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    reinterpret_cast<HashTextDialog*>(lParam)->Initialize(window);
    return TRUE;
  }
  auto* dialog = reinterpret_cast<HashTextDialog*>(GetWindowLongPtrW(window, DWLP_USER));
  if (dialog == nullptr) return FALSE;
  switch (message) {
    case WM_SIZE:
      dialog->layout_.Apply(window);
      return TRUE;
    case WM_GETMINMAXINFO:
      if (dialog->smallestSize_.cx > 0) {
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {dialog->smallestSize_.cx,
                                                                 dialog->smallestSize_.cy};
      }
      return TRUE;
    case WM_COMMAND:
      dialog->OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_DPICHANGED:
      dialog->ChangeDpi(HIWORD(wParam));
      return FALSE;
    case WM_APP_HASHTEXT_RELAYOUT:
      dialog->layout_.Capture(window);
      return TRUE;
    default:
      return FALSE;
  }
}

void HashTextDialog::Initialize(HWND window) {
  window_ = window;
  dpi_ = GetDpi(window);
  SendMessageW(window, WM_SETICON, ICON_SMALL,
               SendMessageW(GetWindow(window, GW_OWNER), WM_GETICON, ICON_SMALL, 0));
  FillList(IDC_HT_ENCODING, {L"UTF-8", L"UTF-16 LE"}, 0);
  FillList(IDC_HT_LINEBREAKS, {L"Windows (CR LF)", L"Unix (LF)"}, 1);
  UINT tabStop = 44;
  SendMessageW(Control(IDC_HT_RESULT), EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
  // Without this the box would accept no more than 32 KiB.
  SendMessageW(Control(IDC_HT_INPUT), EM_SETLIMITTEXT, 0, 0);
  RECT rect;
  GetWindowRect(window, &rect);
  smallestSize_ = {rect.right - rect.left, rect.bottom - rect.top};
  layout_.Capture(window);
  RecomputeHashText();
}

void HashTextDialog::FillList(int control, std::initializer_list<const wchar_t*> entries,
                              int chosen) const {
  for (const wchar_t* entry : entries) {
    SendMessageW(Control(control), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
  }
  SendMessageW(Control(control), CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
}

void HashTextDialog::RecomputeHashText() const {
  const auto chosen = [&](int list) { return SendMessageW(Control(list), CB_GETCURSEL, 0, 0); };
  const TextForm form = {.utf16 = chosen(IDC_HT_ENCODING) == 1,
                         .lfBreaks = chosen(IDC_HT_LINEBREAKS) == 1,
                         .finalBreak = IsDlgButtonChecked(window_, IDC_HT_ADD_EOL) == BST_CHECKED};
  SetDlgItemTextW(
      window_, IDC_HT_RESULT,
      swr::AsWide(HashTextResult(ControlText(Control(IDC_HT_INPUT)), form, mask_, uppercase_)));
}

void HashTextDialog::Copy() const {
  const std::u16string result = ControlText(Control(IDC_HT_RESULT));
  WriteClipboardText(window_, TextInParts::Of(DigestLines(result)));
}

void HashTextDialog::OnCommand(int control, int notification) const {
  switch (control) {
    case IDC_HT_INPUT:
      if (notification == EN_CHANGE) RecomputeHashText();
      break;
    case IDC_HT_ENCODING:
    case IDC_HT_LINEBREAKS:
      if (notification == CBN_SELCHANGE) RecomputeHashText();
      break;
    case IDC_HT_ADD_EOL:
      RecomputeHashText();
      break;
    case IDC_HT_COPY:
      Copy();
      break;
    case IDCANCEL:
      EndDialog(window_, IDCANCEL);
      break;
    default:
      break;
  }
}

void HashTextDialog::ChangeDpi(int dpi) {
  smallestSize_ = {MulDiv(smallestSize_.cx, dpi, dpi_), MulDiv(smallestSize_.cy, dpi, dpi_)};
  dpi_ = dpi;
  // The system now moves the controls; later layouts are computed from their new positions.
  layout_.Forget();
  PostMessageW(window_, WM_APP_HASHTEXT_RELAYOUT, 0, 0);
}

}  // namespace

void ShowHashTextDialog(HWND owner, swr::AlgoMask mask, bool uppercase) {
  HashTextDialog dialog(mask == 0 ? swr::FallbackAlgoMask : mask, uppercase);
  DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_HASH_TEXT), owner,
                  HashTextDialog::HashTextProc, reinterpret_cast<LPARAM>(&dialog));
}

}  // namespace app
