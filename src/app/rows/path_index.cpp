#include "app/rows/path_index.h"

namespace app {

void PathIndex::Add(std::span<const Entry> entries) {
  constexpr size_t few = 1024;
  if (recent_.size() + entries.size() <= std::max(few, sorted_.size() / 8)) {
    for (const Entry& entry : entries) recent_.emplace(entry.hash, entry.id);
    return;
  }
  const auto sortedSize = static_cast<ptrdiff_t>(sorted_.size());
  sorted_.reserve(Size() + entries.size());
  for (const auto& [hash, id] : recent_) sorted_.push_back({hash, id});
  recent_.clear();
  sorted_.insert(sorted_.end(), entries.begin(), entries.end());
  const auto added = sorted_.begin() + sortedSize;
  std::ranges::sort(added, sorted_.end(), {}, &Entry::hash);
  std::ranges::inplace_merge(sorted_, added, {}, &Entry::hash);
}

void PathIndex::Clear() {
  sorted_.clear();
  sorted_.shrink_to_fit();
  recent_.clear();
}

}  // namespace app
