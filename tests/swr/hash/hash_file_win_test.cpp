// How the naming and sharing rules of Windows affect hashing a file.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/hash/hash_file.h"
#include "swr/system/error_codes.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

struct HandleTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE value) noexcept { CloseHandle(value); }
};
using Handle = UniqueHandle<HandleTraits>;

Handle OpenByOther(const std::u16string& path, DWORD access, DWORD share) {
  Handle handle(CreateFileW(AsWide(path), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_TRUE(handle) << GetLastError();
  return handle;
}

// --- Names that the system changes --------------------------------------------------------------

// GetFullPathName drops spaces and full stops at the end of a path and turns device names into
// device paths. A path that already has the long prefix is used unchanged.
TEST(HashFileWinTest, UsesNamesAfterTheLongPrefixUnchanged) {
  TempTree tree;
  for (const std::u16string_view name :
       {u"blank ", u"stop.", u"both. . ", u"CON", u"nul.txt", u"com1"}) {
    SCOPED_TRACE(WideToUtf8(name));
    const std::string content = WideToUtf8(name);
    const std::u16string path = tree.AddFile(name, content);
    ExpectDigestsOf(HashFile(u"\\\\?\\" + path, DefaultAlgoMask, {}), DefaultAlgoMask, content);
  }
}

TEST(HashFileWinTest, WithoutThePrefixTheSystemChangesTheName) {
  TempTree tree;
  for (const std::u16string_view name : {u"blank ", u"stop.", u"both. . "}) {
    SCOPED_TRACE(WideToUtf8(name));
    const HashOutcome outcome = HashFile(tree.AddFile(name, "content"), DefaultAlgoMask, {});
    EXPECT_EQ(outcome.error, ErrorFileNotFound);
    ExpectNoDigests(outcome);
  }
}

TEST(HashFileWinTest, AcceptsSlashesAndDotSegments) {
  TempTree tree;
  tree.AddFile(u"folder/file", "content");
  for (const std::u16string_view relative :
       {u"/folder/file", u"\\folder\\\\file", u"\\folder\\.\\..\\folder\\file"}) {
    SCOPED_TRACE(WideToUtf8(relative));
    ExpectDigestsOf(HashFile(tree.Root() + std::u16string(relative), DefaultAlgoMask, {}),
                    DefaultAlgoMask, "content");
  }
}

// --- Files that others have open ----------------------------------------------------------------

struct SharingCase {
  std::string_view description;
  DWORD access;
  DWORD share;
  uint32_t error;
};

const SharingCase sharingCases[] = {
    {"a reader that shares nothing", GENERIC_READ, 0, ErrorSharingViolation},
    {"a writer that shares nothing", GENERIC_WRITE, 0, ErrorSharingViolation},
    {"a writer that lets others read", GENERIC_WRITE, FILE_SHARE_READ, 0},
    {"a writer that may also delete", GENERIC_WRITE | DELETE, FILE_SHARE_READ, 0},
    {"a reader that lets others read", GENERIC_READ, FILE_SHARE_READ, 0},
};

TEST(HashFileWinTest, RespectsTheSharingModesOfOthers) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "content");
  for (const SharingCase& row : sharingCases) {
    SCOPED_TRACE(row.description);
    const Handle other = OpenByOther(path, row.access, row.share);
    const HashOutcome outcome = HashFile(path, DefaultAlgoMask, {});
    EXPECT_EQ(outcome.error, row.error);
    EXPECT_EQ(outcome.digests[IndexOf(AlgoId::Sha256)].present, row.error == 0);
  }
}

}  // namespace
}  // namespace swr::testing
