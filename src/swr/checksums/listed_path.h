// Names inside checksum files: from the name on a line to the file it means, and back.
#pragma once

#include <string>
#include <string_view>

#include "swr/system/full_path.h"

namespace swr {

// The path that a listed name means for the checksum file at this path: an absolute name is that
// path, a relative one stands beside the checksum file. "." and ".." are kept. On Windows either
// separator is understood and becomes a backslash, and a name that begins with one backslash goes
// to the drive of the checksum file. Elsewhere a name is absolute with a leading slash, and nothing
// in it is changed.
std::u16string ResolveListedPath(std::u16string_view checksumFile, std::u16string_view listedName,
                                 PathStyle style = NativePathStyle);

// `path` as it is seen from the folder, or the whole of it where it lies elsewhere. Letter case
// does not count.
std::u16string MakeRelativePath(std::u16string_view baseFolder, std::u16string_view path,
                                PathStyle style = NativePathStyle);

// On Windows each backslash becomes a slash, as checksum files have them. Elsewhere a backslash is
// a letter like any other and stays.
std::u16string ToForwardSlashes(std::u16string text, PathStyle style = NativePathStyle);

}  // namespace swr
