// Under Wine only: commands of the system that Wine runs on, for what Wine itself can't do.
#pragma once

#include <string>

namespace swr::testing {

// Whether the host's files can be seen, by Wine's drive Z.
bool CanRunHostCommands();

// Starts the line in the host's shell; its end can't be waited for. Throws std::runtime_error when
// it does not start.
void RunHostCommand(const std::wstring& line);

// A path of a drive that the host knows (C or Z), as the host's shell takes it.
std::wstring HostPath(const std::u16string& path);

}  // namespace swr::testing
