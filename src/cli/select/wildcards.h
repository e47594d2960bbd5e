// Wildcards in operands. On Windows the program has to expand them; elsewhere the shell does.
#pragma once

#include <string>
#include <vector>

#include "cli/options/options.h"

namespace cli {

// The entries of a folder whose names match the last component of `name`, in natural order, each
// prefixed with the folder as given; `name` alone if that component has no wildcard or nothing
// matches. Hidden entries match only if `withHidden`, folders only if `withFolders`.
std::vector<std::u16string> Expanded(const std::u16string& name, bool withHidden, bool withFolders);

// Expands the operands on Windows; does nothing elsewhere.
void ExpandWildcards(Options& options);

}  // namespace cli
