// Runs commands of the system that Wine runs on, for what Wine itself can't do.
#pragma once

#include <string>

namespace swr::testing {

// Whether the host's files are accessible as Wine's drive Z.
bool CanRunHostCommands();

// Starts the command line in the host's shell; its end can't be waited for. Throws
// std::runtime_error when it does not start.
void RunHostCommand(const std::wstring& line);

// Converts a path on drive C or Z to the host's path, quoted for its shell.
std::wstring HostPath(const std::u16string& path);

}  // namespace swr::testing
