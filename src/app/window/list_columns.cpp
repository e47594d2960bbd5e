#include "app/window/list_columns.h"

#include <algorithm>

namespace app {
namespace {

// Room for the digits in the list's font, up to where a digest is better read in the details.
uint32_t DigestColumnWidth(swr::AlgoId id) {
  return std::min<uint32_t>(swr::GetAlgo(id).digestSize * 14 + 16, 260);
}

std::u16string Heading(const ColumnDef& column) {
  switch (column.kind) {
    case ColumnKind::Name:
      return u"Name";
    case ColumnKind::Folder:
      return u"Folder";
    case ColumnKind::Size:
      return u"Size";
    case ColumnKind::Digest:
      return std::u16string(swr::GetAlgo(column.algo).name);
    case ColumnKind::Status:
      break;
  }
  return u"Status";
}

}  // namespace

uint32_t* FixedColumnWidths::Of(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Name:
      return &name;
    case ColumnKind::Folder:
      return &folder;
    case ColumnKind::Size:
      return &size;
    case ColumnKind::Digest:
      return nullptr;
    case ColumnKind::Status:
      break;
  }
  return &status;
}

std::vector<ColumnDef> ColumnsFor(swr::AlgoMask mask) {
  std::vector<ColumnDef> columns = {{ColumnKind::Name}, {ColumnKind::Folder}, {ColumnKind::Size}};
  for (const swr::AlgoId id : swr::IdsFromMask(mask)) columns.push_back({ColumnKind::Digest, id});
  columns.push_back({ColumnKind::Status});
  return columns;
}

std::vector<ColumnSpec> DescribeColumns(const std::vector<ColumnDef>& columns,
                                        FixedColumnWidths widths) {
  std::vector<ColumnSpec> specs;
  for (const ColumnDef& column : columns) {
    const uint32_t* fixed = widths.Of(column.kind);
    specs.push_back({.heading = Heading(column),
                     .width = fixed != nullptr ? *fixed : DigestColumnWidth(column.algo),
                     .rightAligned = column.kind == ColumnKind::Size});
  }
  return specs;
}

}  // namespace app
