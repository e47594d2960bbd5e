#include "swr/paths/folder_walk.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/directory.h"
#include "swr/system/error_codes.h"
#include "swr/system/text_services.h"

namespace swr {
namespace {

// Files before folders, then natural order. Names that are equal in that order (because they differ
// only in case or leading zeros) are ordered by code units, so that the result does not depend on
// the file system.
void SortEntries(std::vector<DirectoryEntry>& entries) {
  struct Keyed {
    std::u16string key;
    DirectoryEntry entry;
  };
  std::vector<Keyed> keyed;
  keyed.reserve(entries.size());
  for (DirectoryEntry& entry : entries) {
    std::u16string key = SystemNaturalKey(entry.name);
    keyed.push_back({std::move(key), std::move(entry)});
  }
  std::ranges::sort(keyed, [](const Keyed& a, const Keyed& b) {
    if (a.entry.isDirectory != b.entry.isDirectory) return b.entry.isDirectory;
    const int order = SystemCompareNaturalKeys(a.key, b.key);
    return order != 0 ? order < 0 : a.entry.name < b.entry.name;
  });
  for (size_t i = 0; i < entries.size(); ++i) entries[i] = std::move(keyed[i].entry);
}

// Lists the entries of one folder that the walk visits, in its order. Returns 0, or a Windows error
// code if the folder can't be listed.
uint32_t ListDirectory(const std::u16string& folder, const WalkOptions& options,
                       std::vector<DirectoryEntry>& entries) {
  const uint32_t error =
      ReadDirectory(ToLongPath(folder), entries, options.withSizes, options.cancel);
  // An empty root of a drive has no entries at all, not even "." and "..".
  if (error == ErrorFileNotFound) return 0;
  if (error != 0) return error;
  std::erase_if(entries, [&](const DirectoryEntry& entry) {
    return (entry.isHidden && !options.includeHidden) ||
           (entry.isDirectory && entry.isLink && !options.followLinks);
  });
  SortEntries(entries);
  return 0;
}

// A folder on the path from the root to the current one.
struct Level {
  std::vector<DirectoryEntry> entries;
  size_t next = 0;
  size_t folderLength = 0;                 // of its path
  std::optional<FolderIdentity> identity;  // only if links are followed
};

// Whether the folder is one of those that the walk is inside. A folder whose identity is unknown is
// treated as one of them.
bool IsAmong(const std::vector<Level>& levels, const std::optional<FolderIdentity>& identity) {
  if (!identity) return true;
  return std::ranges::any_of(levels,
                             [&](const Level& level) { return level.identity == identity; });
}

}  // namespace

// Iterative: recursion would overflow the stack in a deep enough tree.
bool WalkFolder(const std::u16string& root, const WalkOptions& options,
                const FoundFileCallback& callback, const std::u16string& pattern) {
  std::vector<Level> levels;
  std::u16string folder = root;
  const size_t relativeStart = JoinPath(root, {}).size();
  const auto enter = [&] {
    Level level{.folderLength = folder.size()};
    if (options.followLinks) {
      level.identity = IdentityOfFolder(ToLongPath(folder));
      if (!levels.empty() && IsAmong(levels, level.identity)) return true;
    }
    if (const uint32_t error = ListDirectory(folder, options, level.entries)) {
      if (options.onError) options.onError(folder, error);
      return false;
    }
    levels.push_back(std::move(level));
    return true;
  };
  if (!enter()) return false;
  while (!levels.empty()) {
    if (options.cancel != nullptr && options.cancel->load(std::memory_order_relaxed)) break;
    Level& level = levels.back();
    folder.resize(level.folderLength);
    if (level.next == level.entries.size()) {
      levels.pop_back();
      continue;
    }
    const DirectoryEntry& entry = level.entries[level.next++];
    std::u16string path = JoinPath(folder, entry.name);
    if (options.wants) {
      const std::u16string_view relative = std::u16string_view(path).substr(relativeStart);
      if (!options.wants(relative, entry.isDirectory)) continue;
    }
    if (!entry.isDirectory) {
      if (pattern.empty() || SystemMatchesPattern(entry.name, pattern)) {
        callback({.path = std::move(path), .relativeStart = relativeStart, .size = entry.size});
      }
    } else if (options.recursive) {
      folder = std::move(path);
      enter();  // one that can't be listed is skipped
    }
  }
  return true;
}

}  // namespace swr
