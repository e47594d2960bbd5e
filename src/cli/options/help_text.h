// The output of --help and --version.
#pragma once

#include <string>
#include <string_view>

#include "version.h"

namespace cli {

inline constexpr std::string_view VersionNumber = SUMWRIGHT_VERSION;

std::string HelpText();
std::string VersionText();

}  // namespace cli
