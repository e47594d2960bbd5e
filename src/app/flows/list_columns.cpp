#include "app/flows/list_columns.h"

#include <algorithm>
#include <optional>
#include <string>

namespace app {
namespace {

// Wide enough for the digits in the list's font; longer digests are better read in the details.
uint32_t DigestColumnWidth(swr::AlgoId id) {
  return std::min<uint32_t>(swr::GetAlgo(id).digestSize * 14 + 16, 260);
}

// The index of the column in FixedColumns, if it is one of them.
std::optional<size_t> FixedPlace(ColumnKind kind) {
  for (size_t i = 0; i < FixedColumns.size(); ++i) {
    if (FixedColumns[i].kind == kind) return i;
  }
  return std::nullopt;
}

}  // namespace

FixedColumnWidths DefaultColumnWidths() {
  FixedColumnWidths widths;
  for (size_t i = 0; i < widths.size(); ++i) widths[i] = FixedColumns[i].width;
  return widths;
}

std::vector<ColumnDef> ColumnsFor(swr::AlgoMask mask) {
  std::vector<ColumnDef> columns = {{ColumnKind::Name}, {ColumnKind::Folder}, {ColumnKind::Size}};
  for (const swr::AlgoId id : swr::IdsFromMask(mask)) columns.push_back({ColumnKind::Digest, id});
  columns.push_back({ColumnKind::Status});
  return columns;
}

void ListColumns::Rebuild(swr::AlgoMask mask) {
  if (!defs_.empty()) ReadWidths();
  defs_ = ColumnsFor(mask);
  std::vector<ColumnSpec> specs;
  for (const ColumnDef& def : defs_) {
    if (const auto place = FixedPlace(def.kind)) {
      specs.push_back({.heading = FixedColumns[*place].heading,
                       .width = widths_[*place],
                       .rightAligned = FixedColumns[*place].rightAligned});
    } else {
      specs.push_back({.heading = std::u16string(swr::GetAlgo(def.algo).name),
                       .width = DigestColumnWidth(def.algo)});
    }
  }
  view_.SetColumns(specs);
}

void ListColumns::ReadWidths() {
  const std::vector<uint32_t> widths = view_.ColumnWidths();
  for (size_t i = 0; i < defs_.size() && i < widths.size(); ++i) {
    if (const auto place = FixedPlace(defs_[i].kind)) widths_[*place] = widths[i];
  }
}

}  // namespace app
