// What other programs may do with a text file while it is being read.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/text_file.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

// The error that another program gets when it opens the file with this access and shares
// everything.
uint32_t OpenError(const std::u16string& path, DWORD access) {
  const HANDLE handle = CreateFileW(AsWide(ToLongPath(path)), access,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return GetLastError();
  CloseHandle(handle);
  return 0;
}

TEST(ReadTextFileWinTest, SharesReadingAndWritingButNotDeleting) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "text");
  bool wasTried = false;
  const InstalledFaults faults({{.call = SystemCall::ReadFile, .before = [&] {
                                   wasTried = true;
                                   EXPECT_EQ(OpenError(path, GENERIC_READ), 0u);
                                   EXPECT_EQ(OpenError(path, GENERIC_WRITE), 0u);
                                   EXPECT_EQ(OpenError(path, DELETE), ErrorSharingViolation);
                                 }}});
  EXPECT_EQ(ReadTextFile(path, nullptr), u"text");
  EXPECT_TRUE(wasTried);
  EXPECT_EQ(OpenError(path, DELETE), 0u) << "after the read";
}

TEST(ReadTextFileWinTest, DoesNotOpenAFileThatIsBeingDeleted) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "text");
  const HANDLE deleter = CreateFileW(AsWide(ToLongPath(path)), DELETE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(deleter, INVALID_HANDLE_VALUE);
  uint32_t error = 0;
  EXPECT_EQ(ReadTextFile(path, &error), std::nullopt);
  EXPECT_EQ(error, ErrorSharingViolation);
  CloseHandle(deleter);
}

}  // namespace
}  // namespace swr::testing
