#include "cli/select/wildcards.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "swr/paths/path_forms.h"
#include "swr/system/directory.h"
#include "swr/system/text_services.h"

namespace cli {

std::vector<std::u16string> Expanded(const std::u16string& name, bool withHidden,
                                     bool withFolders) {
  // "C:*.iso" refers to the current folder of drive C.
  size_t start = name.find_last_of(u"\\/:");
  start = start == name.npos ? 0 : start + 1;
  const std::u16string pattern = name.substr(start);
  if (pattern.find_first_of(u"*?") == pattern.npos) return {name};
  const std::u16string prefix = name.substr(0, start);
  std::vector<swr::DirectoryEntry> entries;
  const std::u16string folder = prefix.empty() ? u"." : prefix;
  if (swr::ReadDirectory(swr::ToLongPath(folder), entries, false) != 0) return {name};
  std::vector<std::u16string> names;
  for (swr::DirectoryEntry& entry : entries) {
    const bool isWanted = (withHidden || !entry.isHidden) && (withFolders || !entry.isDirectory);
    if (isWanted && swr::SystemMatchesPattern(entry.name, pattern)) {
      names.push_back(std::move(entry.name));
    }
  }
  if (names.empty()) return {name};
  std::ranges::sort(names, [](const std::u16string& a, const std::u16string& b) {
    const int order = swr::SystemCompareNatural(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  for (std::u16string& found : names) found.insert(0, prefix);
  return names;
}

void ExpandWildcards(Options& options) {
  if (swr::NativePathStyle != swr::PathStyle::Windows) return;
  std::vector<std::u16string> operands;
  for (const std::u16string& operand : options.operands) {
    std::ranges::move(Expanded(operand, options.selection.hidden, options.selection.recursive),
                      std::back_inserter(operands));
  }
  options.operands = std::move(operands);
}

}  // namespace cli
