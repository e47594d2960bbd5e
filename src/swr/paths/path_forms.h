// Conversion, splitting and joining of paths. Paths are stored in full form; the long form is only
// used in the arguments of system calls.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "swr/system/full_path.h"

namespace swr {

// Makes a path absolute and normalized; SystemFullPath outside tests.
using FullPathFunction = std::function<std::optional<std::u16string>(const std::u16string&)>;

// The form in which a path is passed to a system call. On Windows this is the full path with the
// prefix "\\?\" or "\\?\UNC\", whatever its length. A path that already has such a prefix or the
// device prefix "\\.\", or that can't be made full, is returned unchanged, as is every path on
// other platforms.
std::u16string ToLongPath(const std::u16string& path, PathStyle style = NativePathStyle,
                          const FullPathFunction& makeFull = SystemFullPath);

// `folder` and `name` with one separator between them, or `name` alone if the folder is empty. A
// folder that ends in either separator gets no second one. Nothing else is changed.
std::u16string JoinPath(std::u16string_view folder, std::u16string_view name,
                        PathStyle style = NativePathStyle);

// Whether the path names a folder or a link to one. False if the system can't tell.
bool IsDirectoryPath(const std::u16string& path);

// The parts of a path before and after its last backslash or slash, as views into the path.
struct PathParts {
  std::u16string_view folder;  // empty without a separator
  std::u16string_view name;    // the whole path without a separator
};
PathParts SplitPath(std::u16string_view path);

}  // namespace swr
