// The program from its arguments to its exit code, for both mains and the tests.
#pragma once

#include <string>
#include <vector>

#include "cli/output/byte_sink.h"
#include "cli/output/console.h"

namespace cli {

// `arguments` are those behind the program's name, as bytes in the form of system/name_bytes.h.
// Returns the exit code.
int RunProgram(const std::vector<std::string>& arguments);

// The same with standard output and standard error replaced.
int RunProgram(const std::vector<std::string>& arguments, ByteSink& out, ByteSink& err,
               const ConsoleTraits& streams);

}  // namespace cli
