// Sizes and places of windows in the pixels of the screen, for programs of tests.
#pragma once

namespace swr::testing {

// As the program itself does, this process takes care of the DPI of each screen, or on older
// systems of that of the first. To be called before it makes or asks for any window.
void BecomeDpiAware();

}  // namespace swr::testing
