#include "app/flows/list_cells.h"

#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {

std::u16string ListCells::TextOf(size_t row, size_t column) const {
  if (row >= rows_.Size() || column >= columns_.Defs().size()) return {};
  const Row& shown = rows_[row];
  const ColumnDef& def = columns_.Defs()[column];
  switch (def.kind) {
    case ColumnKind::Name:
      return swr::EscapeForDisplay(shown.Name());
    case ColumnKind::Folder:
      return swr::EscapeForDisplay(shown.Folder());
    case ColumnKind::Size:
      return shown.status == RowStatus::Failed ? u"" : swr::FormatSize(shown.size);
    case ColumnKind::Digest: {
      std::u16string text;
      swr::AppendHex(shown.digests.View(swr::IndexOf(def.algo)), options_.uppercase, text);
      return text;
    }
    case ColumnKind::Status:
      break;
  }
  return RowStatusText(shown, Expected());
}

RowTint ListCells::TintOf(size_t row) const {
  return row < rows_.Size() ? RowTintOf(rows_[row], Expected()) : RowTint::None;
}

}  // namespace app
