#include "app/dialogs/hash_text_dialog_win.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "app/desktop/clipboard_win.h"
#include "app/desktop/control_text_win.h"
#include "app/desktop/dpi_win.h"
#include "app/dialogs/hash_text.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr UINT WM_APP_HASHTEXT_RELAYOUT = 32768;

// How a control follows the size of the dialog. The two text boxes share the added height, and the
// row of options rides between them.
enum class Share : uint8_t { None, Half, Whole };
struct Follow {
  int control;
  bool left;  // its left edge moves with the width
  bool right;
  Share top;  // of the added height
  Share bottom;
};

constexpr std::array<Follow, 9> follows = {{
    {IDC_HT_INPUT, false, true, Share::None, Share::Half},
    {IDC_HT_RESULT, false, true, Share::Half, Share::Whole},
    {IDC_HT_COPY, true, true, Share::Whole, Share::Whole},
    {IDCANCEL, true, true, Share::Whole, Share::Whole},
    {IDC_HT_ENCODING_LABEL, false, false, Share::Half, Share::Half},
    {IDC_HT_ENCODING, false, false, Share::Half, Share::Half},
    {IDC_HT_LINEBREAKS_LABEL, false, false, Share::Half, Share::Half},
    {IDC_HT_LINEBREAKS, false, false, Share::Half, Share::Half},
    {IDC_HT_ADD_EOL, false, false, Share::Half, Share::Half},
}};

class HashTextDialog {
 public:
  HashTextDialog(swr::AlgoMask mask, bool uppercase) : mask_(mask), uppercase_(uppercase) {}

  // Like every procedure that the system calls, not to be left by an exception.
  static INT_PTR CALLBACK HashTextProc(HWND window, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept;

 private:
  void Initialize(HWND window);
  void FillList(int control, std::initializer_list<const wchar_t*> entries, int chosen) const;
  void RecomputeHashText() const;
  void Copy() const;
  void OnCommand(int control, int notification) const;
  void ChangeDpi(int dpi);
  void CaptureLayout();
  void ApplyLayout() const;
  HWND Control(int id) const { return GetDlgItem(window_, id); }

  HWND window_ = nullptr;
  swr::AlgoMask mask_;
  bool uppercase_;
  int dpi_ = 96;
  SIZE smallestSize_ = {};
  bool isCaptured_ = false;
  SIZE baseClient_ = {};
  std::array<RECT, follows.size()> baseRects_ = {};
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
      dialog->ApplyLayout();
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
      dialog->CaptureLayout();
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
  // As much text as there is; without this the box would stop at 32 KiB.
  SendMessageW(Control(IDC_HT_INPUT), EM_SETLIMITTEXT, 0, 0);
  RECT rect;
  GetWindowRect(window, &rect);
  smallestSize_ = {rect.right - rect.left, rect.bottom - rect.top};
  CaptureLayout();
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
  WriteClipboardText(window_, std::u16string(DigestLines(result)));
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
  // The platform moves the controls now; where they land is the new base.
  isCaptured_ = false;
  PostMessageW(window_, WM_APP_HASHTEXT_RELAYOUT, 0, 0);
}

void HashTextDialog::CaptureLayout() {
  RECT client;
  GetClientRect(window_, &client);
  baseClient_ = {client.right, client.bottom};
  for (size_t i = 0; i < follows.size(); ++i) {
    GetWindowRect(Control(follows[i].control), &baseRects_[i]);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&baseRects_[i]), 2);
  }
  isCaptured_ = true;
}

void HashTextDialog::ApplyLayout() const {
  if (!isCaptured_) return;
  RECT client;
  GetClientRect(window_, &client);
  const LONG width = client.right - baseClient_.cx;
  const LONG height = client.bottom - baseClient_.cy;
  const auto part = [&](Share share) {
    return share == Share::None ? 0 : share == Share::Half ? height / 2 : height;
  };
  for (size_t i = 0; i < follows.size(); ++i) {
    const Follow& follow = follows[i];
    RECT rect = baseRects_[i];
    if (follow.left) rect.left += width;
    if (follow.right) rect.right += width;
    rect.top += part(follow.top);
    rect.bottom += part(follow.bottom);
    SetWindowPos(Control(follow.control), nullptr, rect.left, rect.top, rect.right - rect.left,
                 rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  InvalidateRect(window_, nullptr, TRUE);
}

}  // namespace

void ShowHashTextDialog(HWND owner, swr::AlgoMask mask, bool uppercase) {
  HashTextDialog dialog(mask == 0 ? swr::FallbackAlgoMask : mask, uppercase);
  DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_HASH_TEXT), owner,
                  HashTextDialog::HashTextProc, reinterpret_cast<LPARAM>(&dialog));
}

}  // namespace app
