// The list as the flows see it. It holds nothing of its own: it is told how many rows there are and
// asks for their texts as it needs them.
#pragma once

#include <cstddef>
#include <vector>

namespace app {

// Implemented by the list control and by the tests. Called on the window's thread. Rows are numbers
// below the count last announced by SetRowCount.
class ListView {
 public:
  virtual ~ListView() = default;

  // Announces the number of rows and repaints the list.
  virtual void SetRowCount(size_t count) = 0;
  virtual void RedrawRow(size_t index) = 0;
  virtual void RedrawRows() = 0;
  // Ascending. Rows that have gone since the last SetRowCount may still be among them.
  virtual std::vector<size_t> SelectedRows() const = 0;
  virtual size_t SelectedRowCount() const = 0;
  virtual void ClearSelection() = 0;
  // Adds the row to the selection, gives it the focus and scrolls to it.
  virtual void SelectRow(size_t index) = 0;
  // Scrolls until the row is the topmost one, or as near to the top as the end of the list allows.
  virtual void ScrollToRow(size_t index) = 0;
};

}  // namespace app
