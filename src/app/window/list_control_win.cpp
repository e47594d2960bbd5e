#include "app/window/list_control_win.h"

#include <uxtheme.h>

#include <algorithm>
#include <iterator>
#include <numeric>

#include "app/system/dpi_win.h"
#include "swr/system/system_library_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr wchar_t emptyHint[] =
    L"Drop files or folders here, or use Add Files.\n"
    L"To check a download, paste the hash from its web page below.";

constexpr COLORREF GoodTint = RGB(222, 244, 222);
constexpr COLORREF BadTint = RGB(250, 222, 222);

// Wine's list view never asks for the text of an empty list.
bool AsksForEmptyMarkup() {
  static const bool asks =
      static_cast<void (*)()>(swr::FindLoadedFunction(L"ntdll.dll", "wine_get_version")) == nullptr;
  return asks;
}

}  // namespace

void ListControl::Attach(HWND list, int dpi) {
  list_ = list;
  dpi_ = dpi;
  constexpr DWORD styles = LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP | LVS_EX_DOUBLEBUFFER;
  SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, styles, styles);
  const decltype(&SetWindowTheme) setTheme =
      swr::FindSystemFunction(L"uxtheme.dll", "SetWindowTheme");
  if (setTheme != nullptr) setTheme(list_, L"Explorer", nullptr);
}

void ListControl::SetRowCount(size_t count) {
  isEmpty_ = count == 0;
  SendMessageW(list_, LVM_SETITEMCOUNT, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  RedrawRows();
}

void ListControl::RedrawRow(size_t index) {
  // Most rows of a long list are not visible, which the control does not check.
  const auto top = static_cast<size_t>(SendMessageW(list_, LVM_GETTOPINDEX, 0, 0));
  const auto shown = static_cast<size_t>(SendMessageW(list_, LVM_GETCOUNTPERPAGE, 0, 0));
  if (index < top || index > top + shown) return;
  SendMessageW(list_, LVM_REDRAWITEMS, index, static_cast<LPARAM>(index));
}

// An empty list has no items that would paint over the old content.
void ListControl::RedrawRows() { InvalidateRect(list_, nullptr, isEmpty_); }

std::vector<size_t> ListControl::SelectedRows() const {
  std::vector<size_t> rows(SelectedRowCount());
  if (rows.size() == static_cast<size_t>(SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0))) {
    // Querying every row of a long list would be slow.
    std::iota(rows.begin(), rows.end(), size_t{0});
    return rows;
  }
  rows.clear();
  LRESULT item = -1;
  while ((item = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(item), LVNI_SELECTED)) >=
         0) {
    rows.push_back(static_cast<size_t>(item));
  }
  return rows;
}

size_t ListControl::SelectedRowCount() const {
  return static_cast<size_t>(SendMessageW(list_, LVM_GETSELECTEDCOUNT, 0, 0));
}

void ListControl::SetState(int index, UINT state, UINT mask) {
  LVITEMW item = {};
  item.state = state;
  item.stateMask = mask;
  SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&item));
}

void ListControl::ClearSelection() {
  // Repainting the whole list takes longer than repainting a few rows.
  constexpr size_t few = 10;
  const size_t count = SelectedRowCount();
  if (count > few) return SelectOrClearAll(0);
  if (count == 0) return;
  for (const size_t row : SelectedRows()) SetState(static_cast<int>(row), 0, LVIS_SELECTED);
}

void ListControl::SelectRow(size_t index) {
  constexpr UINT both = LVIS_SELECTED | LVIS_FOCUSED;
  SetState(static_cast<int>(index), both, both);
  SendMessageW(list_, LVM_ENSUREVISIBLE, index, FALSE);
}

void ListControl::ScrollToRow(size_t index) {
  // Scrolling up to the row makes it the topmost one, which the first row is anyway.
  if (index > 0) {
    const LRESULT count = SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0);
    SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(count - 1), FALSE);
  }
  SendMessageW(list_, LVM_ENSUREVISIBLE, index, FALSE);
}

POINT ListControl::MenuPosition() const {
  const auto next = [&](LPARAM flag) {
    return SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), flag);
  };
  LRESULT item = next(LVNI_FOCUSED);
  if (item < 0) item = next(LVNI_SELECTED);
  RECT rect = {};
  rect.left = LVIR_LABEL;
  SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect));
  POINT place = {rect.left, rect.bottom};
  ClientToScreen(list_, &place);
  return place;
}

void ListControl::SelectAllRows() { SelectOrClearAll(LVIS_SELECTED); }

// Repaints all rows once instead of one by one.
void ListControl::SelectOrClearAll(UINT state) {
  SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
  SetState(-1, state, LVIS_SELECTED);
  SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
}

HWND ListControl::Header() const {
  return reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
}

int ListControl::ColumnCount() const {
  return static_cast<int>(SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0));
}

void ListControl::ShowSortMark(std::optional<size_t> column, bool descending) {
  const HWND header = Header();
  for (size_t i = 0, count = static_cast<size_t>(ColumnCount()); i < count; ++i) {
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
    item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
    if (i == column) item.fmt |= descending ? HDF_SORTDOWN : HDF_SORTUP;
    SendMessageW(header, HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&item));
  }
}

int ListControl::WidthOf(int column) const {
  return static_cast<int>(SendMessageW(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

void ListControl::SetColumns(const std::vector<ColumnSpec>& columns) {
  SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
  for (int i = ColumnCount(); i > 0; --i) {
    SendMessageW(list_, LVM_DELETECOLUMN, static_cast<WPARAM>(i - 1), 0);
  }
  for (size_t i = 0; i < columns.size(); ++i) {
    std::u16string heading = columns[i].heading;
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    column.fmt = columns[i].rightAligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
    column.cx = ScaleToDpi(static_cast<int>(columns[i].width), dpi_);
    column.pszText = const_cast<wchar_t*>(swr::AsWide(heading));
    SendMessageW(list_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
  SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
}

std::vector<uint32_t> ListControl::ColumnWidths() const {
  std::vector<uint32_t> widths;
  for (int i = 0, count = ColumnCount(); i < count; ++i) {
    widths.push_back(static_cast<uint32_t>(ScaleFromDpi(WidthOf(i), dpi_)));
  }
  return widths;
}

void ListControl::ChangeDpi(int dpi) {
  for (int i = 0, count = ColumnCount(); i < count; ++i) {
    SendMessageW(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(i), MulDiv(WidthOf(i), dpi, dpi_));
  }
  dpi_ = dpi;
}

void ListControl::FillText(const LVITEMW& item, const std::u16string& text) {
  if (item.cchTextMax <= 0) return;
  const size_t length = std::min(text.size(), static_cast<size_t>(item.cchTextMax) - 1);
  std::copy_n(text.begin(), length, item.pszText);
  item.pszText[length] = L'\0';
}

LRESULT ListControl::Draw(NMLVCUSTOMDRAW& draw,
                          const std::function<RowTint(size_t)>& tintOf) const {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return isEmpty_ && !AsksForEmptyMarkup() ? CDRF_NOTIFYPOSTPAINT : CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      switch (tintOf(draw.nmcd.dwItemSpec)) {
        case RowTint::Good:
          draw.clrTextBk = GoodTint;
          break;
        case RowTint::Bad:
          draw.clrTextBk = BadTint;
          break;
        case RowTint::None:
          break;
      }
      return CDRF_DODEFAULT;
    case CDDS_POSTPAINT:
      if (isEmpty_) DrawEmptyHint(draw.nmcd.hdc);
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void ListControl::DrawEmptyHint(HDC dc) const {
  RECT rect;
  GetClientRect(list_, &rect);
  RECT headerRect;
  GetClientRect(Header(), &headerRect);
  rect.top = headerRect.bottom;
  const HGDIOBJ font =
      SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(list_, WM_GETFONT, 0, 0)));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  RECT text = rect;
  constexpr UINT flags = DT_CENTER | DT_NOPREFIX | DT_WORDBREAK;
  DrawTextW(dc, emptyHint, -1, &text, flags | DT_CALCRECT);
  const int height = text.bottom - text.top;
  rect.top += std::max(0L, (rect.bottom - rect.top - height) / 2);
  DrawTextW(dc, emptyHint, -1, &rect, flags);
  SelectObject(dc, font);
}

void ListControl::FillEmptyMarkup(NMLVEMPTYMARKUP& markup) {
  static_assert(std::size(emptyHint) <= std::size(decltype(markup.szMarkup){}));
  markup.dwFlags = EMF_CENTERED;
  std::copy(std::begin(emptyHint), std::end(emptyHint), markup.szMarkup);
}

}  // namespace app
