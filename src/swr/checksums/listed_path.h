// Conversion between the names in checksum files and the paths of files.
#pragma once

#include <string>
#include <string_view>

#include "swr/system/full_path.h"

namespace swr {

// The path of the file that `listedName` denotes in the checksum file at the path `checksumFile`.
// An absolute name is that path; a relative one is appended to the folder of the checksum file. "."
// and ".." are kept. On Windows both separators are accepted and become backslashes, and a name
// that begins with a single separator belongs to the drive of the checksum file. Elsewhere a name
// is absolute if it begins with a slash, and is not changed.
std::u16string ResolveListedPath(std::u16string_view checksumFile, std::u16string_view listedName,
                                 PathStyle style = NativePathStyle);

// `path` relative to `baseFolder` if it lies below that folder, compared without case; otherwise
// the whole path.
std::u16string MakeRelativePath(std::u16string_view baseFolder, std::u16string_view path,
                                PathStyle style = NativePathStyle);

// The same for many paths and one folder.
class RelativePaths {
 public:
  explicit RelativePaths(std::u16string_view baseFolder, PathStyle style = NativePathStyle);
  // A view into `path`.
  std::u16string_view Of(std::u16string_view path) const;

 private:
  std::u16string base_;  // with its separator
};

// On Windows replaces each backslash with a slash, the separator of checksum files. Elsewhere a
// backslash is an ordinary character and is kept.
std::u16string ToForwardSlashes(std::u16string text, PathStyle style = NativePathStyle);

}  // namespace swr
