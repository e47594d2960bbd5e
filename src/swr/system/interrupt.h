// What happens when the user stops the program (Ctrl+C, a closed console, a polite signal): a file
// that is being written is removed, and the process ends at once, the way the platform expects.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// To be called once, at the start of a program that has nothing else to do about an interrupt.
void EndOnInterrupt();

// The file to be removed by an interrupt; an empty path for none. In the form that the system
// takes. One at a time.
void RemoveFileOnInterrupt(const std::u16string& path);

// Bytes that an interrupt writes to standard error before the end: they wipe away a progress line.
// The text must outlive the process; empty for none.
void WriteOnInterrupt(std::string_view text);

}  // namespace swr
