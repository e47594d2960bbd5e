// Closing the window while a long file is hashed: the program ends at once and cleanly.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "resources/resource_ids.h"
#include "swr/hash/algorithms.h"
#include "tests/support/process_handles_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using swr::testing::CountThreads;
using swr::testing::TempTree;

constexpr uint64_t FileSize = uint64_t{4} << 30;

struct ClosingCase {
  const char* description;
  swr::AlgoMask algorithms;
  milliseconds delay;  // from the first progress to the close
};

void ExpectToEndAtOnce(const ClosingCase& test) {
  SCOPED_TRACE(test.description);
  DeleteSettings();
  WriteSetting(u"Algorithms", static_cast<uint32_t>(test.algorithms));
  WriteSetting(u"ShowLegacy", 1);
  TempTree tree;
  const std::u16string path = tree.AddFile(u"long.bin");
  swr::testing::ResizeFile(path, FileSize);
  RunningWindow window({.keepSettings = true});
  window.Drop({path});
  ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
  Sleep(static_cast<DWORD>(test.delay.count()));
  const DWORD process = window.ProcessId();
  // The threads of the window, the worker and the lookup, and at least one that computes digests.
  ASSERT_GE(CountThreads(process), 4u) << "the file is being read";

  // If a thread were not waited for, the exit code would differ.
  const auto start = steady_clock::now();
  EXPECT_EQ(window.Close(), 0);
  const auto taken = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
  EXPECT_LT(taken, milliseconds(1000));
  EXPECT_EQ(CountThreads(process), 0u);
  ::testing::Test::RecordProperty("milliseconds_" +
                                      std::to_string(swr::CountAlgos(test.algorithms)) +
                                      "_algorithms_" + std::to_string(test.delay.count()),
                                  static_cast<int>(taken.count()));
}

TEST(ClosingTest, EndsTheProgramWithinASecondAndLeavesNoThread) {
  const ClosingCase cases[] = {
      {"as it begins", swr::DefaultAlgoMask, milliseconds(0)},
      {"a little later", swr::DefaultAlgoMask, milliseconds(130)},
      {"in the middle", swr::DefaultAlgoMask, milliseconds(700)},
      // With MD2, which needs a tenth of a second per chunk.
      {"all algorithms", swr::AllAlgosMask, milliseconds(300)},
  };
  for (const ClosingCase& test : cases) ExpectToEndAtOnce(test);
}

// The system can close the window while a message box is open. The flow that shows the message then
// goes on with the next file, although the window no longer exists.
TEST(ClosingTest, EndsCleanlyWhileAMessageBoxIsOpen) {
  TempTree tree;
  const std::u16string first = tree.AddFile(u"first.md5");
  const std::u16string second = tree.AddFile(u"second.md5");
  RunningWindow window;
  window.PostCommand(ID_VERIFY_FILE);
  const ProgramDialog picker(window, u"Verify Checksum File");
  picker.SetFileName(u'"' + first + u"\" \"" + second + u'"');
  picker.PostPress(IDOK);
  const ProgramDialog message(window, u"Sumwright");
  ASSERT_EQ(message.Instruction(), u"No checksums were found in this file.");
  EXPECT_EQ(window.Close(), 0);
}

}  // namespace
}  // namespace app::testing
