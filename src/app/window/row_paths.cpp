#include "app/window/row_paths.h"

#include <algorithm>

#include "swr/text/text.h"

namespace app {
void RowPaths::Find(const std::u16string& path, const std::function<void(size_t)>& found) {
  if (rows_.empty()) return;
  if (!isMade_) Make();
  const uint64_t hash = swr::CaseHash(path);
  auto entry = std::lower_bound(entries_.begin(), entries_.end(), Entry{.hash = hash});
  for (; entry != entries_.end() && entry->hash == hash; ++entry) {
    const auto& row = rows_[entry->index];
    if (row != nullptr && swr::EqualsNoCase(row->path, path)) found(entry->index);
  }
}

void RowPaths::Make() {
  entries_.clear();
  entries_.reserve(rows_.size());
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i] != nullptr) entries_.push_back({swr::CaseHash(rows_[i]->path), i});
  }
  std::sort(entries_.begin(), entries_.end());
  isMade_ = true;
}

}  // namespace app
