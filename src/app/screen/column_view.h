// The columns of the list as the flows see them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace app {

struct ColumnSpec {
  std::u16string heading;
  uint32_t width = 0;  // pixels at 96 DPI
  bool rightAligned = false;
};

// Implemented by the list control and by the tests. Called on the window's thread.
class ColumnView {
 public:
  virtual ~ColumnView() = default;

  // Replaces all columns.
  virtual void SetColumns(const std::vector<ColumnSpec>& columns) = 0;
  // Shows the sort arrow in the heading of this column only, or nowhere without a column.
  virtual void ShowSortMark(std::optional<size_t> column, bool descending) = 0;
  // The current widths by column index, in pixels at 96 DPI.
  virtual std::vector<uint32_t> ColumnWidths() const = 0;
};

}  // namespace app
