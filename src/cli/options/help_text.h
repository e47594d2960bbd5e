// What --help and --version print.
#pragma once

#include <string>
#include <string_view>

namespace cli {

inline constexpr std::string_view VersionNumber = "2.0.0";

std::string HelpText();
std::string VersionText();

}  // namespace cli
