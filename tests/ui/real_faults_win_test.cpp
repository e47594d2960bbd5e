// Real failures, without fault injection, in the real window. All other files are hashed as usual.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/host_command_win.h"
#include "tests/support/temp_tree.h"
#include "tests/support/wine_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::FromWide;
using swr::testing::CanRunHostCommands;
using swr::testing::HostPath;
using swr::testing::IsWine;
using swr::testing::RunHostCommand;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint64_t MiB = uint64_t{1} << 20;

constexpr int SmallFileCount = 3;

bool IsFailure(const std::u16string& status) {
  return !status.empty() && !status.starts_with(u"Done") && status != u"Waiting" &&
         status != u"Hashing" && status != u"Cancelled";
}

// ---- A drive that disappears.

// A drive letter mapped to a folder, until it is removed. Under Wine a drive is a link in the
// prefix, which the host makes and removes; Windows has calls for it.
class RemovableDrive {
 public:
  explicit RemovableDrive(const std::u16string& folder)
      : folder_(folder), name_(std::wstring(1, FreeLetter()) + L":") {
    if (!IsWine()) {
      DefineDosDeviceW(0, name_.c_str(), AsWide(folder));
    } else if (CanRunHostCommands()) {
      RunHostCommand(L"ln -sfn " + HostPath(folder) + L" " + Link());
    } else {
      return;
    }
    isThere_ = WaitFor([&] { return Exists(); });
    EXPECT_TRUE(isThere_);
  }
  ~RemovableDrive() { Remove(); }
  RemovableDrive(const RemovableDrive&) = delete;
  RemovableDrive& operator=(const RemovableDrive&) = delete;

  bool IsThere() const { return isThere_; }
  // With a trailing backslash.
  std::u16string Root() const { return FromWide(name_) + u"\\"; }
  // False when it can't be removed.
  bool Remove() {
    if (!Exists()) return true;
    if (IsWine()) {
      RunHostCommand(L"rm -f " + Link());
    } else {
      DefineDosDeviceW(DDD_REMOVE_DEFINITION, name_.c_str(), AsWide(folder_));
    }
    return WaitFor([&] { return !Exists(); });
  }

 private:
  static wchar_t FreeLetter() {
    const DWORD used = GetLogicalDrives();
    wchar_t letter = L'X';
    while (letter > L'D' && (used >> (letter - L'A') & 1) != 0) --letter;
    return letter;
  }
  bool Exists() const { return GetFileAttributesW(AsWide(Root())) != INVALID_FILE_ATTRIBUTES; }
  std::wstring Link() const {
    return L"$WINEPREFIX/dosdevices/" + std::wstring(1, name_[0] | 0x20) + L":";
  }

  const std::u16string folder_;
  const std::wstring name_;
  bool isThere_ = false;
};

TEST(RealFaultsTest, ADriveIsRemovedWhileItsFilesAreHashed) {
  TempTree tree;
  swr::testing::ResizeFile(tree.AddFile(u"1 long"), 512 * MiB);
  for (const std::u16string_view name : {u"2", u"3", u"4"}) tree.AddFile(name, "abc");
  TempTree elsewhere;
  const std::u16string last = elsewhere.AddFile(u"5", "abc");
  RemovableDrive drive(tree.Root());
  if (!drive.IsThere()) GTEST_SKIP() << "no drive can be created here";

  RunningWindow window;
  window.Drop({drive.Root(), last});
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == SmallFileCount + 2; }));
  ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
  ASSERT_TRUE(drive.Remove());
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  // Whether the open file can be read to its end depends on the system.
  EXPECT_TRUE(IsFailure(statuses[0]) || statuses[0].starts_with(u"Done"));
  for (int row = 1; row <= SmallFileCount; ++row) EXPECT_TRUE(IsFailure(statuses[row])) << row;
  EXPECT_EQ(statuses[4], u"Done");
  EXPECT_EQ(window.Cell(2, u"MD5"), u"");

  // The drive is gone, and files on it are reported as missing.
  window.Command(ID_CLEAR_LIST);
  window.Drop({drive.Root(), drive.Root() + u"2", last});
  window.WaitUntilIdle();
  ASSERT_EQ(window.RowCount(), 3);
  EXPECT_EQ(window.Cell(2, u"Status"), u"Done");
  for (int row = 0; row < 2; ++row) {
    EXPECT_TRUE(IsFailure(window.Cell(row, u"Status"))) << row;
  }
  EXPECT_EQ(window.Close(), 0);
}

// ---- Another process; here the test itself.

TEST(RealFaultsTest, AFileThatAnotherProcessTruncatesIsMarked) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"1 long");
  const std::u16string next = tree.AddFile(u"2 short", "abc");
  for (const uint64_t left : {uint64_t{0}, 100 * MiB}) {
    SCOPED_TRACE(left);
    swr::testing::ResizeFile(path, 1024 * MiB);
    RunningWindow window;
    window.Drop({path, next});
    ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
    swr::testing::ResizeFile(path, left);
    window.WaitUntilIdle();
    EXPECT_EQ(window.Column(u"Status"),
              (Texts{u"Done, but the file changed while it was read", u"Done"}));
    EXPECT_EQ(window.Close(), 0);
  }
}

// ---- Paths that no file can have.

TEST(RealFaultsTest, PathsThatNoFileCanHave) {
  TempTree tree;
  const std::u16string last = tree.AddFile(u"last", "abc");
  RunningWindow window;
  const std::u16string wide = tree.Root() + u"\\" + std::u16string(32'000, u'n');
  std::u16string deep = tree.Root();
  while (deep.size() < 32'000) deep += u"\\n";
  const Texts paths = {wide, deep, u"\\\\.\\nul", u"\\\\.\\com1", u"Q:\\no such drive", last};
  window.Drop(paths);
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  ASSERT_EQ(statuses.size(), 6u);
  for (int row = 0; row < 5; ++row) EXPECT_TRUE(IsFailure(statuses[row])) << row;
  EXPECT_EQ(statuses[5], u"Done");
  // The details pane shows such a path too.
  for (int row = 0; row < 6; ++row) {
    window.SelectOnly({row});
    const std::u16string name = paths[row].substr(paths[row].rfind(u'\\') + 1);
    EXPECT_TRUE(window.Text(IDC_DETAILS).starts_with(name.substr(0, 100))) << row;
  }
  EXPECT_EQ(window.Close(), 0);
}

}  // namespace
}  // namespace app::testing
