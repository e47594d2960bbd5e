// The manual page, generated from the option table.
#pragma once

#include <string>

namespace cli {

// In groff's man macros.
std::string ManPage();

}  // namespace cli
