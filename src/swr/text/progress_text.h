// Formats the progress of a task.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

// `part` of `whole` in steps of 1/`steps`, rounded down: 100 steps give a percentage. `whole` is
// not 0.
uint64_t FractionOf(uint64_t part, uint64_t whole, uint64_t steps);

// "0:07", "61:00": minutes and seconds. Minutes do not roll over into hours. Longer times,
// including infinity, are shown as 2^31 - 1 seconds.
std::u16string FormatTimeLeft(double seconds);

}  // namespace swr
