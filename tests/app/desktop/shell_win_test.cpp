// Opening files and folders with the real shell.
#include "app/desktop/shell_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "swr/system/file.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;

bool Exists(const std::u16string& path) {
  uint32_t error = 0;
  return swr::QueryFileInfo(path, error).has_value();
}

bool Appears(const std::u16string& path, milliseconds timeout) {
  for (milliseconds waited{0}; waited < timeout; waited += milliseconds(50)) {
    if (Exists(path)) return true;
    std::this_thread::sleep_for(milliseconds(50));
  }
  return Exists(path);
}

// A checksum file can list "tool.bat\setup.exe", which makes a program look like a folder.
TEST(ShowInFileManagerTest, DoesNotStartAFolderThatIsAProgram) {
  swr::testing::TempTree tree;
  const std::u16string mark = tree.Path(u"started");
  const std::u16string program =
      tree.AddFile(u"tool.bat", "@echo started> \"" + swr::WideToUtf8(mark) + "\"\r\n");

  WindowsShell().ShowInFolder(program + u"\\setup.exe", program);
  EXPECT_FALSE(Appears(mark, milliseconds(1500)));

  // Opened on purpose, the program does leave its mark.
  OpenWithShell(program);
  EXPECT_TRUE(Appears(mark, std::chrono::seconds(20)));
  // The command prompt closes the program's file a moment later.
  std::this_thread::sleep_for(milliseconds(500));
}

}  // namespace
}  // namespace app::testing
