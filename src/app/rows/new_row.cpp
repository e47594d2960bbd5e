#include "app/rows/new_row.h"

#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/system/full_path.h"

namespace app {

Row NewRow(const std::u16string& path) {
  Row row;
  const std::u16string full = swr::SystemFullPath(path).value_or(path);
  row.path = full;
  if (const auto info = swr::QueryFileInfo(swr::ToLongPath(full), row.error)) {
    row.size = info->size;
    row.modified = info->modified;
  } else {
    row.status = RowStatus::Failed;
  }
  return row;
}

}  // namespace app
