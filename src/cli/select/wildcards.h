// Wildcards in the names that the user gives. On Windows the program has to expand them; elsewhere
// the shell has done so.
#pragma once

#include <string>
#include <vector>

#include "cli/options/options.h"

namespace cli {

// The entries of a folder whose names fit the last part of `name`, in natural order and each with
// the folder as it was given; `name` alone where it has no wildcard there or nothing fits. Hidden
// entries fit only where `withHidden`, folders only where `withFolders`.
std::vector<std::u16string> Expanded(const std::u16string& name, bool withHidden, bool withFolders);

// Expands the operands where that is the program's task.
void ExpandWildcards(Options& options);

}  // namespace cli
