// The list view control. It is virtual: it knows only the number of rows, and requests the text of
// each cell that it draws.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/screen/column_view.h"
#include "app/screen/list_view.h"
#include "app/verdicts/row_verdict.h"

namespace app {

class ListControl final : public ListView, public ColumnView {
 public:
  void Attach(HWND list, int dpi);
  // Scales the column widths from the old DPI to this one.
  void ChangeDpi(int dpi);

  void SetRowCount(size_t count) override;
  void RedrawRow(size_t index) override;
  void RedrawRows() override;
  std::vector<size_t> SelectedRows() const override;
  size_t SelectedRowCount() const override;
  void ClearSelection() override;
  void SelectRow(size_t index) override;
  void ScrollToRow(size_t index) override;

  void SetColumns(const std::vector<ColumnSpec>& columns) override;
  void ShowSortMark(std::optional<size_t> column, bool descending) override;
  std::vector<uint32_t> ColumnWidths() const override;

  void SelectAllRows();
  // Where to open a context menu for the focused row or, without one, the first selected row: below
  // its name, in screen coordinates.
  POINT MenuPosition() const;
  // Copies a cell's text into the buffer of the request, truncated to its size.
  static void FillText(const LVITEMW& item, const std::u16string& text);
  // Handles a custom-draw notification: gives rows their background, and draws the hint of an empty
  // list when the control does not request its text.
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
