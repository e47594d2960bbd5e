// What the kit passes to its tests through the environment, and where they find their files.
#pragma once

#include <string>

namespace app::testing {

// The folder for pictures of the window; empty when none are wanted.
std::u16string PictureFolder();

// A file of the kit in the folder of the test program ("unprotected_program.exe").
std::u16string BesideTheTests(const std::u16string& name);

}  // namespace app::testing
