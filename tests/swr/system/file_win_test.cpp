// Opening files on Windows: folders can't be opened, and sharing modes apply.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

TEST(FileWinTest, CannotOpenFolders) {
  TempTree tree;
  File file;
  EXPECT_EQ(File::Open(ToLongPath(tree.Root()), FileSharing::Everything, file), ErrorAccessDenied);
}

TEST(FileWinTest, DistinguishesAMissingFolderFromAMissingFile) {
  TempTree tree;
  File file;
  EXPECT_EQ(File::Open(ToLongPath(tree.Path(u"absent/file")), FileSharing::Everything, file),
            ErrorPathNotFound);
  EXPECT_EQ(File::Open(ToLongPath(tree.Path(u"absent")), FileSharing::Everything, file),
            ErrorFileNotFound);
}

struct SharingCase {
  std::string_view description;
  FileSharing sharing;
  uint32_t deleteError;  // when another program deletes the open file
};

const SharingCase sharingCases[] = {
    {"everything", FileSharing::Everything, 0},
    {"all but deleting", FileSharing::ReadWrite, ErrorSharingViolation},
};

TEST(FileWinTest, SharesAsRequested) {
  for (const SharingCase& row : sharingCases) {
    SCOPED_TRACE(row.description);
    TempTree tree;
    const std::u16string path = tree.AddFile(u"file", "content");
    File file;
    ASSERT_EQ(File::Open(ToLongPath(path), row.sharing, file), 0u);
    AppendBytes(path, "more");
    SetLastError(0);
    DeleteFileW(AsWide(ToLongPath(path)));
    EXPECT_EQ(GetLastError(), row.deleteError);
    EXPECT_EQ(file.Info()->size, 11u);
  }
}

TEST(FileWinTest, CannotOpenAFileThatIsNotShared) {
  TempTree tree;
  const std::u16string path = ToLongPath(tree.AddFile(u"file"));
  const HANDLE other =
      CreateFileW(AsWide(path), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  File file;
  EXPECT_EQ(File::Open(path, FileSharing::Everything, file), ErrorSharingViolation);
  CloseHandle(other);
}

}  // namespace
}  // namespace swr::testing
