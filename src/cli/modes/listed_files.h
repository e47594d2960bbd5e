// Names in lists and the files that they refer to.
#pragma once

#include <string>
#include <string_view>

#include "cli/output/console.h"

namespace cli {

// A name as it is written in a list and before a verdict: escaped and marked as coreutils does if
// it contains a line end or a backslash.
std::string ListedName(const Console& console, std::u16string_view name);

// Equal for different spellings of one path, as far as the path rules alone can tell: links are not
// resolved.
std::u16string PathIdentity(const std::u16string& path);

}  // namespace cli
