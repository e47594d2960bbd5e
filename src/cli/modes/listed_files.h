// Names in lists and the files that they mean.
#pragma once

#include <string>
#include <string_view>

#include "cli/output/console.h"

namespace cli {

// A name as it stands on a line of a list, and before a verdict: with the mark and the escapes of
// coreutils where it holds a line end or a backslash.
std::string ListedName(const Console& console, std::u16string_view name);

// Equal for two spellings of one path, as far as the rules of paths tell.
std::u16string PathIdentity(const std::u16string& path);

}  // namespace cli
