// The columns of the list: which there are for a selection of algorithms, and how wide.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/window/view.h"
#include "swr/hash/algorithms.h"

namespace app {

enum class ColumnKind : uint8_t { Name = 0, Folder = 1, Size = 2, Digest = 3, Status = 4 };

struct ColumnDef {
  ColumnKind kind = ColumnKind::Name;
  swr::AlgoId algo = {};  // meaningful for Digest only
};

// What the user may widen and keeps, in pixels at 96 DPI.
struct FixedColumnWidths {
  uint32_t name = 200;
  uint32_t folder = 160;
  uint32_t size = 70;
  uint32_t status = 90;

  // The width of a column of this kind, or null for a digest's, which always follows its length.
  uint32_t* Of(ColumnKind kind);
};

// Name, Folder, Size, one column for each algorithm of the selection, Status.
std::vector<ColumnDef> ColumnsFor(swr::AlgoMask mask);

// Heading, width and alignment of each column.
std::vector<ColumnSpec> DescribeColumns(const std::vector<ColumnDef>& columns,
                                        FixedColumnWidths widths);

}  // namespace app
