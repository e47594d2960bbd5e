// The columns of the list and their widths, for a selection of algorithms.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/screen/column_view.h"
#include "swr/hash/algorithms.h"

namespace app {

enum class ColumnKind : uint8_t { Name = 0, Folder = 1, Size = 2, Digest = 3, Status = 4 };

struct ColumnDef {
  ColumnKind kind = ColumnKind::Name;
  swr::AlgoId algo = {};  // meaningful for Digest only
};

// The columns whose widths the user can change and the settings keep. The width of a digest's
// column always follows from the length of the digest.
struct FixedColumn {
  ColumnKind kind;
  const char16_t* heading;
  uint32_t width;  // initially; pixels at 96 DPI
  bool rightAligned;
};
inline constexpr std::array<FixedColumn, 4> FixedColumns = {{
    {ColumnKind::Name, u"Name", 200, false},
    {ColumnKind::Folder, u"Folder", 160, false},
    {ColumnKind::Size, u"Size", 70, true},
    {ColumnKind::Status, u"Status", 90, false},
}};

// The widths of the fixed columns, in the order of FixedColumns, in pixels at 96 DPI.
using FixedColumnWidths = std::array<uint32_t, FixedColumns.size()>;
FixedColumnWidths DefaultColumnWidths();

// Name, Folder, Size, one column for each algorithm of the selection, Status.
std::vector<ColumnDef> ColumnsFor(swr::AlgoMask mask);

// The columns on the screen.
class ListColumns {
 public:
  // The view must outlive the object.
  explicit ListColumns(ColumnView& view) : view_(view) {}

  // Replaces the columns with those for this selection. The fixed ones keep their widths.
  void Rebuild(swr::AlgoMask mask);
  // Reads the widths that the user has given the fixed columns.
  void ReadWidths();
  // By column index.
  const std::vector<ColumnDef>& Defs() const { return defs_; }
  const FixedColumnWidths& Widths() const { return widths_; }
  // Call before the first Rebuild.
  void SetWidths(const FixedColumnWidths& widths) { widths_ = widths; }

 private:
  ColumnView& view_;
  std::vector<ColumnDef> defs_;
  FixedColumnWidths widths_ = DefaultColumnWidths();
};

}  // namespace app
