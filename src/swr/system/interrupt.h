// Handles an interrupt by the user (Ctrl+C, a closed console, SIGTERM): the file that is being
// written is removed, and the process ends at once as the platform expects.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Call once, at the start of a program that needs no other handling of interrupts.
void EndOnInterrupt();

// Sets the one file that an interrupt removes, as a path in the form for system calls; an empty
// path for none.
void RemoveFileOnInterrupt(const std::u16string& path);

// Sets the bytes that an interrupt writes to standard error before the process ends, to erase a
// progress line; empty for none. The text must remain valid until the process ends.
void WriteOnInterrupt(std::string_view text);

}  // namespace swr
