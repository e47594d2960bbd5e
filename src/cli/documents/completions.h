// The completions of the shells, made from the table of options.
#pragma once

#include <string>

namespace cli {

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();
std::string PowerShellCompletion();

}  // namespace cli
