// Patterns of names, as in --exclude and --include.
#pragma once

#include <string_view>

#include "swr/system/full_path.h"

namespace cli {

// Whether the file or folder fits the pattern: "*" is any run of characters but separators, "**"
// any run at all, "?" one character but a separator, "[a-z]" one of a set and "[!a-z]" one that is
// not. A pattern with a separator is compared with the whole path, one without it with the last
// part alone; a leading separator only says that the pattern begins at the top, and one at the end
// is ignored. With the Windows style a backslash is a separator and letter case does not count;
// with the other one a backslash takes the next character as it is.
bool FitsPattern(std::u16string_view relativePath, std::u16string_view pattern,
                 swr::PathStyle style = swr::NativePathStyle);

}  // namespace cli
