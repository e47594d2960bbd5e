// Real failures, without fault injection, while the real window is working.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint64_t MiB = uint64_t{1} << 20;

// A failure takes little time, and everything else goes on.
constexpr int FewFiles = 3;

bool IsFailure(const std::u16string& status) {
  return !status.empty() && !status.starts_with(u"Done") && status != u"Waiting" &&
         status != u"Hashing" && status != u"Cancelled";
}

// ---- A drive that goes away.

// The drive X, mapped to a folder, until it is removed. Under Wine a drive is a link in the prefix,
// which the host makes and removes; Windows has calls for it.
class RemovableDrive {
 public:
  explicit RemovableDrive(const std::u16string& folder) : folder_(folder) {
    if (!IsWine()) {
      DefineDosDeviceW(0, L"X:", AsWide(folder));
    } else {
      RunBelow(L"ln -sfn " + Below(folder) + L" $WINEPREFIX/dosdevices/x:");
    }
    isThere_ = WaitFor([] { return Exists(); });
  }
  ~RemovableDrive() { Remove(); }
  RemovableDrive(const RemovableDrive&) = delete;
  RemovableDrive& operator=(const RemovableDrive&) = delete;

  bool IsThere() const { return isThere_; }
  // False when it can't be removed.
  bool Remove() {
    if (!Exists()) return true;
    if (IsWine()) {
      RunBelow(L"rm -f $WINEPREFIX/dosdevices/x:");
    } else {
      DefineDosDeviceW(DDD_REMOVE_DEFINITION, L"X:", AsWide(folder_));
    }
    return WaitFor([] { return !Exists(); });
  }

 private:
  static bool Exists() { return GetFileAttributesW(L"X:\\") != INVALID_FILE_ATTRIBUTES; }
  static bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  }
  // The same folder for the host, which knows only these drive letters.
  static std::wstring Below(const std::u16string& folder) {
    std::wstring path(AsWide(folder));
    for (wchar_t& unit : path) unit = unit == L'\\' ? L'/' : unit;
    return (path[0] == L'Z' ? L"" : L"$WINEPREFIX/drive_c") + path.substr(2);
  }
  // The host's process can't be waited for.
  static void RunBelow(const std::wstring& command) {
    std::wstring line = L"sh -c \"" + command + L"\"";
    STARTUPINFOW startup = {.cb = sizeof startup};
    PROCESS_INFORMATION process = {};
    ASSERT_TRUE(CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &startup, &process))
        << GetLastError();
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }

  const std::u16string folder_;
  bool isThere_ = false;
};

TEST(RealFaultsTest, ADriveIsRemovedWhileItsFilesAreHashed) {
  TempTree tree;
  swr::testing::ResizeFile(tree.AddFile(u"1 long"), 512 * MiB);
  for (const std::u16string_view name : {u"2", u"3", u"4"}) tree.AddFile(name, "abc");
  TempTree elsewhere;
  const std::u16string last = elsewhere.AddFile(u"5", "abc");
  RemovableDrive drive(tree.Root());
  ASSERT_TRUE(drive.IsThere());

  RunningWindow window;
  window.Drop({u"X:\\", last});
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == FewFiles + 2; }));
  ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
  ASSERT_TRUE(drive.Remove());
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  // Whether the open file can be read to its end depends on the system.
  EXPECT_TRUE(IsFailure(statuses[0]) || statuses[0].starts_with(u"Done"));
  for (int row = 1; row <= FewFiles; ++row) EXPECT_TRUE(IsFailure(statuses[row])) << row;
  EXPECT_EQ(statuses[4], u"Done");
  EXPECT_EQ(window.Cell(2, u"MD5"), u"");

  // The drive is gone, and files on it are reported as missing.
  window.Command(ID_CLEAR_LIST);
  window.Drop({u"X:\\", u"X:\\2", last});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Status").back(), u"Done");
  for (int row = 0; row + 1 < window.RowCount(); ++row) {
    EXPECT_TRUE(IsFailure(window.Cell(row, u"Status"))) << row;
  }
  EXPECT_EQ(window.Close(), 0);
}

// ---- Another process: this one.

TEST(RealFaultsTest, AFileThatAnotherProcessCutsIsMarked) {
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

// ---- Paths that lead to no file.

TEST(RealFaultsTest, PathsThatNoFileCanHave) {
  TempTree tree;
  const std::u16string last = tree.AddFile(u"last", "abc");
  RunningWindow window;
  const std::u16string wide = tree.Root() + u"\\" + std::u16string(32'000, u'n');
  std::u16string deep = tree.Root();
  while (deep.size() < 32'000) deep += u"\\n";
  window.Drop({wide, deep, u"\\\\.\\nul", u"\\\\.\\com1", u"Q:\\no such drive", last});
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  ASSERT_EQ(statuses.size(), 6u);
  for (int row = 0; row < 5; ++row) EXPECT_TRUE(IsFailure(statuses[row])) << row;
  EXPECT_EQ(statuses[5], u"Done");
  // The details pane shows such a path too.
  for (int row = 0; row < 6; ++row) window.SelectOnly({row});
  EXPECT_EQ(window.Close(), 0);
}

}  // namespace
}  // namespace app::testing
