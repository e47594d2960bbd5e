// What the kit tells its tests through the environment, and where they find what belongs to them.
#pragma once

#include <string>

namespace app::testing {

// Where pictures of the window are to be saved; empty when nobody wants them.
std::u16string PictureFolder();

// A file of the kit beside the program of the tests ("unprotected_program.exe").
std::u16string BesideTheTests(const std::u16string& name);

}  // namespace app::testing
