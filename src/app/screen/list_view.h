// The list as the flows see it. It stores no rows: it knows only their number, and asks for the
// texts of the cells that it draws.
#pragma once

#include <cstddef>
#include <vector>

namespace app {

// Implemented by the list control and by the tests. Called on the window's thread. Rows are given
// by index, below the count last set by SetRowCount.
class ListView {
 public:
  virtual ~ListView() = default;

  // Sets the number of rows and repaints the list.
  virtual void SetRowCount(size_t count) = 0;
  virtual void RedrawRow(size_t index) = 0;
  virtual void RedrawRows() = 0;
  // Ascending. May include rows that were removed after the last SetRowCount.
  virtual std::vector<size_t> SelectedRows() const = 0;
  virtual size_t SelectedRowCount() const = 0;
  virtual void ClearSelection() = 0;
  // Adds the row to the selection, gives it the focus and scrolls to it.
  virtual void SelectRow(size_t index) = 0;
  // Scrolls the row to the top, or as near to it as the end of the list allows.
  virtual void ScrollToRow(size_t index) = 0;
};

}  // namespace app
