// The few rules by which the program treats paths: the long form for system calls, splitting and
// joining. Paths are kept in full form and become long only in the argument of a system call.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "swr/system/full_path.h"

namespace swr {

// What makes a path absolute and clean; SystemFullPath outside tests.
using FullPathFunction = std::function<std::optional<std::u16string>(const std::u16string&)>;

// The form in which a path goes into a system call. On Windows that is the full path behind
// "\\?\" or "\\?\UNC\", whatever its length; a path that has such a prefix, or the device prefix
// "\\.\", and one that can't be made full come back unchanged. Elsewhere a path is its own long
// form.
std::u16string ToLongPath(const std::u16string& path, PathStyle style = NativePathStyle,
                          const FullPathFunction& makeFull = SystemFullPath);

// `folder` and `name` with one separator between them, or `name` alone for an empty folder. Either
// separator at the folder's end counts. Nothing else is changed.
std::u16string JoinPath(std::u16string_view folder, std::u16string_view name,
                        PathStyle style = NativePathStyle);

// Whether the path names a folder, through links too. False when it can't be asked.
bool IsDirectoryPath(const std::u16string& path);

// Views into a path, cut at its last backslash or slash, which belongs to neither.
struct PathParts {
  std::u16string_view folder;  // empty without a separator
  std::u16string_view name;    // the whole path without a separator
};
PathParts SplitPath(std::u16string_view path);

}  // namespace swr
