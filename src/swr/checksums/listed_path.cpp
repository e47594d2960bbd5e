#include "swr/checksums/listed_path.h"

#include <algorithm>

#include "swr/text/text.h"

namespace swr {
namespace {

// The name in the folder of the checksum file. Uses the separator of that path.
std::u16string InFolderOf(std::u16string_view checksumFile, std::u16string_view name) {
  const size_t separator = checksumFile.find_last_of(u"\\/");
  if (separator == checksumFile.npos) return std::u16string(name);
  std::u16string path(checksumFile.substr(0, separator + 1));
  path += name;
  return path;
}

bool HasDrive(std::u16string_view path) { return path.size() >= 2 && path[1] == u':'; }

}  // namespace

std::u16string ResolveListedPath(std::u16string_view checksumFile, std::u16string_view listedName,
                                 PathStyle style) {
  if (style == PathStyle::Posix) {
    return listedName.starts_with(u'/') ? std::u16string(listedName)
                                        : InFolderOf(checksumFile, listedName);
  }
  std::u16string name(listedName);
  std::ranges::replace(name, u'/', u'\\');
  if (HasDrive(name) || name.starts_with(u"\\\\")) return name;
  if (!name.starts_with(u'\\')) return InFolderOf(checksumFile, name);
  if (!HasDrive(checksumFile)) return name;
  return std::u16string(checksumFile.substr(0, 2)) + name;
}

RelativePaths::RelativePaths(std::u16string_view baseFolder, PathStyle style) : base_(baseFolder) {
  const char16_t separator = style == PathStyle::Windows ? u'\\' : u'/';
  if (!base_.ends_with(separator)) base_ += separator;
}

std::u16string_view RelativePaths::Of(std::u16string_view path) const {
  const bool isBelow =
      path.size() > base_.size() && EqualsNoCase(path.substr(0, base_.size()), base_);
  return isBelow ? path.substr(base_.size()) : path;
}

std::u16string MakeRelativePath(std::u16string_view baseFolder, std::u16string_view path,
                                PathStyle style) {
  return std::u16string(RelativePaths(baseFolder, style).Of(path));
}

std::u16string ToForwardSlashes(std::u16string text, PathStyle style) {
  if (style == PathStyle::Windows) std::ranges::replace(text, u'\\', u'/');
  return text;
}

}  // namespace swr
