// The list view control, which holds nothing of its own: it is told how many rows there are and
// asks for the text of each cell.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/window/row_verdict.h"
#include "app/window/view.h"

namespace app {

class ListControl {
 public:
  void Attach(HWND list, int dpi);

  void SetRowCount(size_t count);
  void RedrawRow(size_t index);
  void RedrawRows();
  std::vector<size_t> SelectedRows() const;
  size_t SelectedRowCount() const;
  void ClearSelection();
  void SelectRow(size_t index);
  void ScrollToRow(size_t index);
  void SelectAllRows();
  void SetColumns(const std::vector<ColumnSpec>& columns);
  void ShowSortMark(std::optional<size_t> column, bool descending);
  // At 96 DPI.
  std::vector<uint32_t> ColumnWidths() const;
  // Scales the present widths from the old DPI to this one.
  void ChangeDpi(int dpi);
  // Copies a cell's text into the buffer of the request, cut to its length.
  static void FillText(const LVITEMW& item, const std::u16string& text);
  // Where a menu of the focused row belongs, or of the first selected one: below its name, on the
  // screen.
  POINT MenuPlace() const;
  // Answers a custom-draw notification: gives rows their background, and draws the hint of an empty
  // list where the control does not ask for its text.
  LRESULT Draw(NMLVCUSTOMDRAW& draw, const std::function<RowTint(size_t)>& tintOf) const;
  static void FillEmptyMarkup(NMLVEMPTYMARKUP& markup);

 private:
  void SetState(int index, UINT state, UINT mask);
  void SelectOrClearAll(UINT state);
  HWND Header() const;
  int ColumnCount() const;
  int WidthOf(int column) const;
  void DrawEmptyHint(HDC dc) const;

  HWND list_ = nullptr;
  int dpi_ = 96;
  bool isEmpty_ = true;
};

}  // namespace app
