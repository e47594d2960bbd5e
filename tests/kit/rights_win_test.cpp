// Files and folders that the user has no permission to read, and files that another program has
// locked.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/display_text.h"
#include "tests/support/system_command_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::FormatErrorText;
using swr::testing::RunSystemCommand;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

bool CanBeOpened(const std::u16string& path) {
  const HANDLE file = CreateFileW(AsWide(path), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

// Denies everyone read access to the file or folder while the object exists.
class DeniedAccess {
 public:
  explicit DeniedAccess(const std::u16string& path) : path_(AsWide(path)) {
    // S-1-1-0 is the group Everyone, whose name depends on the language.
    RunSystemCommand(L"icacls \"" + path_ + L"\" /deny *S-1-1-0:(RX)");
  }
  ~DeniedAccess() { RunSystemCommand(L"icacls \"" + path_ + L"\" /remove:d *S-1-1-0"); }
  DeniedAccess(const DeniedAccess&) = delete;
  DeniedAccess& operator=(const DeniedAccess&) = delete;

 private:
  std::wstring path_;
};

TEST(FolderRightsTest, AnUnreadableFolderIsSkipped) {
  TempTree tree;
  tree.AddFile(u"d/closed/secret", "secret");
  tree.AddFile(u"d/open", DigestsOfAbc.input);
  const std::u16string closed = tree.Path(u"d/closed");
  const DeniedAccess denied(closed);
  if (CanBeOpened(closed)) GTEST_SKIP() << "icacls has no effect here";
  const RunningWindow window;
  window.Drop({tree.Path(u"d")});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"), Texts{u"open"});
  EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  // Dropped alone, it adds no rows and shows no message.
  window.Command(ID_CLEAR_LIST);
  window.Drop({closed});
  EXPECT_EQ(window.RowCount(), 0);
}

TEST(FolderRightsTest, AnUnreadableFileShowsTheError) {
  TempTree tree;
  const std::u16string closed = tree.AddFile(u"1 closed", "secret");
  const std::u16string open = tree.AddFile(u"2 open", DigestsOfAbc.input);
  const DeniedAccess denied(closed);
  if (CanBeOpened(closed)) GTEST_SKIP() << "icacls has no effect here";
  const RunningWindow window;
  window.Drop({closed, open});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Status"), (Texts{FormatErrorText(ERROR_ACCESS_DENIED), u"Done"}));
}

// This process is the other program.
TEST(LockedFileTest, AnExclusivelyOpenedFileShowsTheError) {
  TempTree tree;
  const std::u16string held = tree.AddFile(u"1 held", "content");
  const std::u16string next = tree.AddFile(u"2 next", DigestsOfAbc.input);
  const HANDLE other =
      CreateFileW(AsWide(held), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  {
    const RunningWindow window;
    window.Drop({held, next});
    window.WaitUntilIdle();
    EXPECT_EQ(window.Column(u"Status"), (Texts{FormatErrorText(ERROR_SHARING_VIOLATION), u"Done"}));
  }
  CloseHandle(other);
}

TEST(LockedFileTest, ALockedPartOfAFileShowsTheError) {
  TempTree tree;
  const std::u16string held = tree.AddFile(u"1 held", "content");
  const std::u16string next = tree.AddFile(u"2 next", DigestsOfAbc.input);
  const HANDLE other = CreateFileW(AsWide(held), GENERIC_READ | GENERIC_WRITE,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  ASSERT_TRUE(LockFile(other, 2, 0, 2, 0));
  // Whether the system enforces the lock.
  const HANDLE reader = CreateFileW(AsWide(held), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  char bytes[16];
  DWORD read = 0;
  const bool isEnforced = !ReadFile(reader, bytes, sizeof bytes, &read, nullptr) &&
                          GetLastError() == ERROR_LOCK_VIOLATION;
  CloseHandle(reader);
  if (isEnforced) {
    const RunningWindow window;
    window.Drop({held, next});
    window.WaitUntilIdle();
    EXPECT_EQ(window.Column(u"Status"), (Texts{FormatErrorText(ERROR_LOCK_VIOLATION), u"Done"}));
    EXPECT_EQ(window.Cell(0, u"MD5"), u"");
  }
  CloseHandle(other);
  if (!isEnforced) GTEST_SKIP() << "a locked part of a file can be read here";
}

TEST(LockedFileTest, AFileThatAnotherProgramWritesIsHashedAsItIs) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"log", DigestsOfAbc.input);
  const swr::testing::WritingHandle writer(path);
  const RunningWindow window;
  window.Drop({path});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
}

}  // namespace
}  // namespace app::testing
