// Commands of the system that tests need where there is no call for the same, or none without
// rights that a user does not have.
#pragma once

#include <string>

namespace swr::testing {

// Runs the line in a command prompt that does not show and waits for its end: the exit code.
// Throws std::runtime_error when it can't be started or does not end within a minute.
unsigned long RunSystemCommand(const std::wstring& line);

}  // namespace swr::testing
