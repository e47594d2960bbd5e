// Runs system commands, for what no system call can do, or only with additional rights.
#pragma once

#include <string>

namespace swr::testing {

// Runs the command line in an invisible command prompt, waits for it and returns the exit code.
// Throws std::runtime_error when it can't be started or does not end within a minute.
unsigned long RunSystemCommand(const std::wstring& line);

}  // namespace swr::testing
