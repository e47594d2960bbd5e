#include "swr/paths/path_forms.h"

#include "swr/system/file.h"

namespace swr {
namespace {

bool IsSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

}  // namespace

std::u16string ToLongPath(const std::u16string& path, PathStyle style,
                          const FullPathFunction& makeFull) {
  if (style == PathStyle::Posix) return path;
  if (path.starts_with(u"\\\\?\\") || path.starts_with(u"\\\\.\\")) return path;
  const std::optional<std::u16string> full = makeFull(path);
  if (!full) return path;
  if (full->starts_with(u"\\\\")) return u"\\\\?\\UNC\\" + full->substr(2);
  return u"\\\\?\\" + *full;
}

std::u16string JoinPath(std::u16string_view folder, std::u16string_view name, PathStyle style) {
  std::u16string path(folder);
  if (!path.empty() && !IsSeparator(path.back())) {
    path += style == PathStyle::Windows ? u'\\' : u'/';
  }
  path += name;
  return path;
}

bool IsDirectoryPath(const std::u16string& path) {
  uint32_t error = 0;
  const std::optional<FileInfo> info = QueryFileInfo(ToLongPath(path), error);
  return info && info->isDirectory;
}

PathParts SplitPath(std::u16string_view path) {
  const size_t separator = path.find_last_of(u"\\/");
  if (separator == path.npos) return {.folder = {}, .name = path};
  return {.folder = path.substr(0, separator), .name = path.substr(separator + 1)};
}

}  // namespace swr
