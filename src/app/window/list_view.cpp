// What the list shows: its cells and its columns.
#include "app/window/main_window.h"
#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {

std::u16string MainWindow::CellText(size_t row, size_t column) const {
  // The list view can ask after the model has shrunk.
  if (row >= rows.size() || column >= columns.size()) return {};
  const ListRow& shown = *rows[row];
  switch (columns[column].kind) {
    case ColumnKind::Name:
      return swr::EscapeForDisplay(shown.name);
    case ColumnKind::Folder:
      return swr::EscapeForDisplay(shown.folder);
    case ColumnKind::Size:
      return shown.status == RowStatus::Failed ? u"" : swr::FormatSize(shown.size);
    case ColumnKind::Digest: {
      const swr::DigestSlot& slot = shown.digests[swr::IndexOf(columns[column].algo)];
      return slot.present ? swr::DigestToWideHex(slot, uppercase) : u"";
    }
    case ColumnKind::Status:
      break;
  }
  return RowStatusText(shown, boxExpected ? &*boxExpected : nullptr);
}

RowTint MainWindow::TintOf(size_t row) const {
  return row < rows.size() ? RowTintOf(*rows[row], boxExpected ? &*boxExpected : nullptr)
                           : RowTint::None;
}

void MainWindow::RebuildColumns() {
  if (!columns.empty()) SaveColumnWidths();
  columns = ColumnsFor(algorithms);
  view_.SetColumns(DescribeColumns(columns, fixedWidths));
  sortColumn.reset();
}

void MainWindow::SaveColumnWidths() {
  const std::vector<uint32_t> widths = view_.ColumnWidths();
  for (size_t i = 0; i < columns.size() && i < widths.size(); ++i) {
    if (uint32_t* fixed = fixedWidths.Of(columns[i].kind)) *fixed = widths[i];
  }
}

}  // namespace app
