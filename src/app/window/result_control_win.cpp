#include "app/window/result_control_win.h"

#include <utility>

#include "app/system/dpi_win.h"
#include "app/system/icons_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr COLORREF GoodColor = RGB(16, 124, 16);
constexpr COLORREF BadColor = RGB(196, 43, 28);

int IconOf(ResultKind kind) {
  switch (kind) {
    case ResultKind::Good:
      return IDI_GOOD;
    case ResultKind::Bad:
      return IDI_BAD;
    case ResultKind::Hint:
      return IDI_HINT;
    case ResultKind::Busy:
      return IDI_BUSY;
    case ResultKind::None:
      break;
  }
  return 0;
}

COLORREF ColorOf(ResultKind kind, bool highContrast) {
  if (!highContrast && kind == ResultKind::Good) return GoodColor;
  if (!highContrast && kind == ResultKind::Bad) return BadColor;
  return GetSysColor(COLOR_BTNTEXT);
}

}  // namespace

void ResultControl::Attach(HWND control, int dpi) {
  control_ = control;
  ChangeDpi(dpi);
}

void ResultControl::ChangeDpi(int dpi) {
  dpi_ = dpi;
  const LRESULT dialogFont = SendMessageW(GetParent(control_), WM_GETFONT, 0, 0);
  LOGFONTW description = {};
  GetObjectW(reinterpret_cast<HFONT>(dialogFont), sizeof description, &description);
  description.lfWeight = FW_BOLD;
  Font font(CreateFontIndirectW(&description));
  SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
  boldFont_ = std::move(font);
}

void ResultControl::Set(const std::u16string& text, ResultKind kind) {
  if (text == text_ && kind == kind_) return;
  text_ = text;
  kind_ = kind;
  SetWindowTextW(control_, swr::AsWide(text));
  InvalidateRect(control_, nullptr, TRUE);
}

void ResultControl::Draw(const DRAWITEMSTRUCT& item, bool highContrast) const {
  const HDC dc = item.hDC;
  RECT rect = item.rcItem;
  FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNFACE));
  if (text_.empty()) return;
  if (const int iconId = IconOf(kind_); iconId != 0) {
    const int size = ScaleToDpi(16, dpi_);
    const Icon icon = LoadScaledIcon(iconId, size);
    const int top = rect.top + (rect.bottom - rect.top - size) / 2;
    DrawIconEx(dc, rect.left, top, icon.Get(), size, size, 0, nullptr, DI_NORMAL);
    rect.left += size + ScaleToDpi(6, dpi_);
  }
  const bool isBold = kind_ == ResultKind::Good || kind_ == ResultKind::Bad;
  const auto dialogFont =
      reinterpret_cast<HFONT>(SendMessageW(GetParent(control_), WM_GETFONT, 0, 0));
  const HGDIOBJ oldFont = SelectObject(dc, isBold ? boldFont_.Get() : dialogFont);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, ColorOf(kind_, highContrast));
  DrawTextW(dc, swr::AsWide(text_), static_cast<int>(text_.size()), &rect,
            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  SelectObject(dc, oldFont);
}

}  // namespace app
