// The manual page, made from the table of options.
#pragma once

#include <string>

namespace cli {

// In the man macros of groff.
std::string ManPage();

}  // namespace cli
