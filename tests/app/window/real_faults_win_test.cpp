// Real failures, without fault injection: paths that are not files, and full disks.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/hash/hash_file.h"
#include "swr/system/error_codes.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/display_text.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AsWide;
using swr::FormatErrorText;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

struct HandleTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE value) noexcept { CloseHandle(value); }
};
using Handle = swr::UniqueHandle<HandleTraits>;

bool Exists(const std::u16string& path) {
  return GetFileAttributesW(AsWide(path)) != INVALID_FILE_ATTRIBUTES;
}

// The window's status cells for these paths once everything is hashed.
Texts StatusesOf(const Texts& paths) {
  WorkingWindow window;
  window.adding.AddPaths(paths);
  EXPECT_TRUE(window.WaitUntilIdle());
  Texts statuses;
  for (size_t i = 0; i < window.rows.Size(); ++i) statuses.push_back(window.StatusCell(i));
  return statuses;
}

// A pipe that never delivers anything.
constexpr char16_t PipeName[] = u"\\\\.\\pipe\\SumwrightTest";
Handle MakePipe() {
  Handle pipe(
      CreateNamedPipeW(AsWide(PipeName), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 10, 0, 0, 0, nullptr));
  EXPECT_TRUE(pipe) << GetLastError();
  return pipe;
}

TEST(RealFaultsTest, APipeAmongThePaths) {
  TempTree tree;
  const std::u16string no = FormatErrorText(swr::ErrorNotSupported);
  // Each time it is opened, one of its instances is used up.
  const Handle ends[] = {MakePipe(), MakePipe(), MakePipe(), MakePipe(), MakePipe(), MakePipe()};
  const Texts statuses = StatusesOf({PipeName, tree.AddFile(u"last", "abc")});
  ASSERT_EQ(statuses.size(), 2u);
  EXPECT_FALSE(statuses[0].starts_with(u"Done")) << "with or without file info from the system";
  EXPECT_EQ(statuses[1], u"Done");
  const swr::HashOutcome outcome = swr::HashFile(PipeName, swr::DefaultAlgoMask, {});
  EXPECT_EQ(outcome.error, swr::ErrorNotSupported);

  WorkingWindow window;
  window.verification.VerifyFile(PipeName);
  EXPECT_EQ(window.desktop.messages,
            std::vector{MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                                      PipeName + (u"\n\n" + no) + u".")});
}

// Whatever the system reports for them: none is treated as a file, and none blocks.
TEST(RealFaultsTest, DevicesAmongThePaths) {
  TempTree tree;
  const std::u16string last = tree.AddFile(u"last", "abc");
  Texts devices = {u"\\\\.\\nul", u"\\\\.\\com1", u"\\\\.\\con", u"\\\\?\\nul", u"\\\\?\\com1",
                   u"nul",        u"con",         u"com1",       u"C:\\nul",    u"C:\\com1.txt"};
  // Under Wine the host's devices are visible, including an endless one.
  if (Exists(u"Z:\\dev")) devices.push_back(u"Z:\\dev\\zero");
  for (const std::u16string& device : devices) {
    SCOPED_TRACE(::testing::PrintToString(device));
    const Texts statuses = StatusesOf({device, last});
    ASSERT_EQ(statuses.size(), 2u);
    EXPECT_FALSE(statuses[0].empty());
    EXPECT_FALSE(statuses[0].starts_with(u"Done"));
    EXPECT_EQ(statuses[1], u"Done");
    EXPECT_NE(swr::HashFile(device, swr::DefaultAlgoMask, {}).error, 0u);

    WorkingWindow window;
    window.verification.VerifyFile(device);
    ASSERT_EQ(window.desktop.messages.size(), 1u);
    EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"The checksum file can't be read.");
  }
}

TEST(RealFaultsTest, SavingToAFullDisk) {
  const std::u16string full = u"Z:\\dev\\full";
  if (!Exists(u"Z:\\dev")) GTEST_SKIP() << "/dev/full does not exist here";
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Md5));
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, 1}}});
  window.desktop.saveTarget = SaveTarget{full, 0};
  window.commands.Run(ID_SAVE_CHECKSUMS);
  EXPECT_EQ(
      window.desktop.messages,
      std::vector{MessageDialog(TaskDialogIcon::Error, u"The checksums couldn't be saved.",
                                full + u"\n\n" + FormatErrorText(swr::ErrorDiskFull) + u".")});
}

}  // namespace
}  // namespace app::testing
