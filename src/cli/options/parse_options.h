// Parses the command line into Options.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/options/options.h"

namespace cli {

// Why the command line is invalid: a sentence without a full stop.
struct UsageError {
  std::string text;
};

// `arguments` are those after the program's name, as bytes (see system/name_bytes.h).
std::variant<Options, UsageError> ParseOptions(const std::vector<std::string>& arguments);

}  // namespace cli
