// A window whose files are on a slow share: every call to the share takes 1 or 10 ms, or does not
// return at all. Files are looked up and hashed by the real threads.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/desktop/origin_threads.h"
#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/decimal_text.h"
#include "swr/text/encoding.h"
#include "tests/support/fault_plan.h"
#include "tests/support/gate.h"
#include "tests/support/own_resources.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using swr::SystemCall;
using swr::testing::Gate;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;
using Clock = std::chrono::steady_clock;

constexpr milliseconds LongestMessage{50};
constexpr milliseconds LongestCancel{100};
constexpr milliseconds LongestClose{1000};

// On a busy machine a message occasionally takes longer; a window that waits for the share takes
// longer every time.
constexpr int Tries = 5;

std::u16string NameInShare(size_t file) {
  return u"share/folder" + swr::DecimalText(file / 25) + u"/file" + swr::DecimalText(file);
}

// Files in several folders, and a checksum file that lists them all with wrong digests.
struct Share {
  explicit Share(size_t count) {
    std::string lines;
    for (size_t i = 0; i < count; ++i) {
      tree.AddFile(NameInShare(i), "x");
      lines += std::string(32, '0') + "  " + swr::WideToUtf8(NameInShare(i)) + "\n";
    }
    list = tree.AddFile(u"list.md5", lines);
  }

  TempTree tree;
  std::u16string folder = tree.Path(u"share");
  std::u16string list;
};

// A window's message loop, which measures how long each message takes. The share does not answer
// questions about the origin of a file.
class MeasuredWindow {
 public:
  MeasuredWindow() { window.algorithms.Select(swr::MaskOf(swr::AlgoId::Md5)); }
  ~MeasuredWindow() { originGate_->Open(); }
  MeasuredWindow(const MeasuredWindow&) = delete;
  MeasuredWindow& operator=(const MeasuredWindow&) = delete;

  template <typename Message>
  void Handle(Message&& message) {
    const auto start = Clock::now();
    message();
    longest = std::max(longest, duration_cast<milliseconds>(Clock::now() - start));
  }
  // Runs the loop, every 10 ms, until `ends` is true. False when that takes more than a minute.
  template <typename Condition>
  bool RunUntil(Condition&& ends) {
    const auto start = Clock::now();
    for (int turn = 0; !ends(); ++turn) {
      if (Clock::now() - start > std::chrono::minutes(1)) return false;
      Handle([&] { window.TakeResults(); });
      if (turn % 20 == 0) Handle([&] { window.Tick(); });
      window.AcknowledgeProgress();
      std::this_thread::sleep_for(milliseconds(10));
    }
    return true;
  }
  bool IsLookingUp() const { return window.arrivals.Open().Any(); }
  size_t CountRows(RowStatus status) const {
    return static_cast<size_t>(std::ranges::count(window.rows, status, &Row::status));
  }

  // Whether some row's origin is awaited.
  bool AwaitsOrigin() const { return std::ranges::count(window.rows, true, &Row::originRequested); }

 private:
  // Shared with the threads that wait at it.
  const std::shared_ptr<Gate> originGate_ = std::make_shared<Gate>();
  OriginThreads origins_{[gate = originGate_](const std::u16string&) {
                           gate->Pass();
                           return swr::ZoneRecord{};
                         },
                         [] {}};

 public:
  WorkingWindow window{&origins_};
  milliseconds longest{0};
};

struct SlowCase {
  milliseconds delay;
  size_t files;
};
const SlowCase slowCases[] = {{milliseconds(1), 300}, {milliseconds(10), 40}};

TEST(SlowIntakeTest, TheWindowStaysResponsiveWhileFilesAreLookedUp) {
  for (const auto& [delay, count] : slowCases) {
    const Share share(count);
    for (const bool isList : {false, true}) {
      milliseconds best = milliseconds::max();
      for (int i = 0; i < Tries && best > LongestMessage; ++i) {
        const InstalledFaults slow({}, delay);
        MeasuredWindow measured;
        WorkingWindow& window = measured.window;
        measured.Handle([&] {
          isList ? window.verification.VerifyFile(share.list)
                 : window.adding.AddPaths({share.folder});
        });
        ASSERT_TRUE(measured.IsLookingUp());
        bool hashedMeanwhile = false;
        ASSERT_TRUE(measured.RunUntil([&] {
          hashedMeanwhile |= measured.CountRows(RowStatus::Done) > 0 && measured.IsLookingUp();
          return !measured.IsLookingUp();
        }));
        EXPECT_TRUE(hashedMeanwhile);
        EXPECT_EQ(measured.AwaitsOrigin(), !isList) << "the first added file is selected";
        EXPECT_EQ(window.rows.Size(), count);
        best = std::min(best, measured.longest);
        measured.Handle([&] { window.commands.Run(IDC_CANCEL); });
      }
      EXPECT_LE(best, LongestMessage) << delay.count() << " ms a call, list " << isList;
    }
  }
}

// A message that waits for a file and then for its origin.
TEST(SlowIntakeTest, AFileIsShownInTimeWhileItsOriginIsAwaited) {
  const Share share(1);
  milliseconds best = milliseconds::max();
  bool wasShown = false;
  for (int i = 0; i < Tries && (!wasShown || best > LongestMessage); ++i) {
    // Looking up the file takes about 20 ms.
    const InstalledFaults slow({}, milliseconds(8));
    MeasuredWindow measured;
    measured.Handle([&] { measured.window.adding.AddPaths({share.tree.Path(NameInShare(0))}); });
    if (measured.AwaitsOrigin()) {
      wasShown = true;
      best = std::min(best, measured.longest);
    }
    ASSERT_TRUE(measured.RunUntil([&] { return !measured.IsLookingUp(); }));
  }
  EXPECT_TRUE(wasShown);
  EXPECT_LE(best, LongestMessage);
}

TEST(SlowIntakeTest, CancelTakesEffectAtOnce) {
  for (const auto& [delay, count] : slowCases) {
    const Share share(count);
    for (const bool isList : {false, true}) {
      auto best = Clock::duration::max();
      for (int i = 0; i < Tries && best > LongestCancel; ++i) {
        const InstalledFaults slow({}, delay);
        MeasuredWindow measured;
        WorkingWindow& window = measured.window;
        isList ? window.verification.VerifyFile(share.list)
               : window.adding.AddPaths({share.folder});
        ASSERT_TRUE(measured.RunUntil([&] { return window.rows.Size() > 3; }));
        ASSERT_TRUE(measured.IsLookingUp());
        const auto start = Clock::now();
        window.commands.Run(IDC_CANCEL);
        ASSERT_TRUE(measured.RunUntil([&] { return !measured.IsLookingUp(); }));
        best = std::min(best, Clock::now() - start);
        const uint32_t calls = slow.Count(SystemCall::PathInfo);
        ASSERT_TRUE(window.WaitUntilIdle());
        EXPECT_EQ(slow.Count(SystemCall::PathInfo), calls);
        EXPECT_GT(measured.CountRows(RowStatus::Cancelled), 0u);
        EXPECT_EQ(measured.CountRows(RowStatus::Cancelled) + measured.CountRows(RowStatus::Done),
                  window.rows.Size());
        EXPECT_FALSE(window.view.progress);
        if (isList) {
          EXPECT_EQ(window.rows.Size(), count) << "every line is counted";
          EXPECT_TRUE(window.view.resultLine.ends_with(u" not checked."));
        } else {
          EXPECT_LT(window.rows.Size(), count);
        }
      }
      EXPECT_LE(best, LongestCancel) << delay.count() << " ms a call, list " << isList;
    }
  }
}

// Listing a large folder is a single step of the walk; a cancel still ends it in the middle.
TEST(SlowIntakeTest, CancelEndsTheListingOfALargeFolder) {
  TempTree tree;
  for (size_t i = 0; i < 500; ++i) tree.AddFile(u"large/" + swr::DecimalText(i));
  const InstalledFaults slow({}, milliseconds(10));
  MeasuredWindow measured;
  measured.window.adding.AddPaths({tree.Path(u"large")});
  ASSERT_TRUE(measured.RunUntil([&] { return slow.Count(SystemCall::NextEntry) > 5; }));
  measured.window.commands.Run(IDC_CANCEL);
  ASSERT_TRUE(measured.RunUntil([&] { return !measured.IsLookingUp(); }));
  EXPECT_LT(slow.Count(SystemCall::NextEntry), 400u);
  EXPECT_TRUE(measured.window.rows.IsEmpty());
}

TEST(SlowIntakeTest, ClosingDoesNotWaitForACallThatDoesNotReturn) {
  const Share share(10);
  const SystemCall hanging[] = {SystemCall::PathInfo, SystemCall::ListDirectory,
                                SystemCall::NextEntry};
  for (const SystemCall call : hanging) {
    const size_t threadsBefore = swr::testing::CountOwnResources().threads;
    Gate gate;
    const InstalledFaults faults({{.call = call, .nth = 2, .before = [&] { gate.Pass(); }}});
    auto window = std::make_unique<WorkingWindow>();
    const auto thread = window->intakeThread;
    window->adding.AddPaths({share.folder});
    gate.WaitForArrival();
    const auto start = Clock::now();
    window.reset();
    EXPECT_LE(Clock::now() - start, LongestClose);
    gate.Open();
    thread->Wait();
    EXPECT_LE(swr::testing::WaitForThreads(threadsBefore), threadsBefore)
        << "the thread ends when its call returns";
  }
}

TEST(SlowIntakeTest, FilesThatDisappearDuringTheWalkAreMissing) {
  for (const milliseconds delay : {milliseconds(0), milliseconds(1)}) {
    const auto share = std::make_unique<Share>(100);
    const InstalledFaults faults(
        {{.call = SystemCall::PathInfo,
          .nth = 30,
          .before =
              [&] {
                for (size_t i = 0; i < 100; ++i) {
                  swr::testing::RemoveFile(share->tree.Path(NameInShare(i)));
                }
              }}},
        delay);
    WorkingWindow window;
    window.adding.AddPaths({share->folder});
    ASSERT_TRUE(window.WaitUntilIdle());
    // The current folder had been listed already; nothing is found in the folders after it.
    EXPECT_EQ(window.rows.Size(), 50u);
    EXPECT_EQ(window.StatusCell(window.rows.Size() - 1), u"Missing");
    EXPECT_FALSE(window.view.progress);
    EXPECT_TRUE(window.desktop.messages.empty());
  }
}

TEST(SlowIntakeTest, ErrorsOfAShareAppearInTheRows) {
  const Share share(60);
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 0, .code = swr::ErrorNetworkNameGone},
       {.call = SystemCall::OpenFile, .nth = 2, .code = swr::ErrorNetworkNameGone}},
      milliseconds(1));
  WorkingWindow window;
  window.verification.VerifyFile(share.list);
  ASSERT_TRUE(window.WaitUntilIdle());
  EXPECT_EQ(window.rows.Size(), 60u);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 60 unreadable.", ResultKind::Bad}));
  window.verification.VerifyFile(share.list);
  ASSERT_TRUE(window.WaitUntilIdle());
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"The checksum file can't be read.");
}

TEST(SlowIntakeTest, WithoutAThreadTheWindowWaitsAndNoFileIsLost) {
  const Share share(30);
  const InstalledFaults faults({{.call = SystemCall::StartThread, .nth = 1, .code = 8}},
                               milliseconds(1));
  WorkingWindow window;
  window.adding.AddPaths({share.folder});
  window.verification.VerifyFile(share.list);
  ASSERT_TRUE(window.WaitUntilIdle());
  EXPECT_EQ(window.rows.Size(), 30u);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 30 FAILED.", ResultKind::Bad}));
}

}  // namespace
}  // namespace app::testing
