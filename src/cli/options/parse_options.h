// From the command line to Options.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/options/options.h"

namespace cli {

// Why the command line can't be understood: a sentence without a full stop.
struct UsageError {
  std::string text;
};

// `arguments` are those behind the program's name, as bytes in the form of system/name_bytes.h.
std::variant<Options, UsageError> ParseOptions(const std::vector<std::string>& arguments);

}  // namespace cli
