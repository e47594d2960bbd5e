// DPI awareness for test programs, so that they see window sizes and positions in screen pixels.
#pragma once

namespace swr::testing {

// Makes this process per-monitor DPI-aware like the program itself or, on older systems, system
// DPI-aware. Call before creating or querying any window.
void BecomeDpiAware();

}  // namespace swr::testing
