// Name patterns, as used by --exclude and --include.
#pragma once

#include <string_view>

#include "swr/system/full_path.h"

namespace cli {

// Whether the path of a file or folder matches the pattern. "*" matches any run of characters
// except separators, "**" any run of characters, "?" one character except a separator, "[a-z]" one
// character of a set and "[!a-z]" one outside it. A pattern with a separator is matched against the
// whole path, one without against the last component. A leading separator anchors the pattern at
// the top; a trailing one is ignored. In the Windows style a backslash is a separator and case is
// ignored; in the POSIX style a backslash escapes the next character.
bool FitsPattern(std::u16string_view relativePath, std::u16string_view pattern,
                 swr::PathStyle style = swr::NativePathStyle);

}  // namespace cli
