// Shell completion scripts, generated from the option table.
#pragma once

#include <string>

namespace cli {

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();
std::string PowerShellCompletion();

}  // namespace cli
