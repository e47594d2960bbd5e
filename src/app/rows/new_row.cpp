#include "app/rows/new_row.h"

#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/system/full_path.h"

namespace app {

Row NewRow(const std::u16string& path) {
  Row row;
  row.path = swr::SystemFullPath(path).value_or(path);
  const swr::PathParts parts = swr::SplitPath(row.path);
  row.name = parts.name;
  row.folder = parts.folder;
  if (const auto info = swr::QueryFileInfo(swr::ToLongPath(row.path), row.error)) {
    row.size = info->size;
    row.modified = info->modified;
  } else {
    row.status = RowStatus::Failed;
  }
  return row;
}

}  // namespace app
