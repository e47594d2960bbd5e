// The whole program, from arguments to exit code. Called by both main functions and by the tests.
#pragma once

#include <string>
#include <vector>

#include "cli/output/byte_sink.h"
#include "cli/output/console.h"

namespace cli {

// `arguments` are those after the program's name, as bytes (see system/name_bytes.h). Returns the
// exit code.
int RunProgram(const std::vector<std::string>& arguments);

// The same with standard output and standard error replaced.
int RunProgram(const std::vector<std::string>& arguments, ByteSink& out, ByteSink& err,
               const ConsoleTraits& streams);

}  // namespace cli
