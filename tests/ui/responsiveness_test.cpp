// The window stays responsive while files are hashed: it can be moved, resized, scrolled and
// stopped.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using swr::testing::TempTree;

constexpr uint64_t GiB = uint64_t{1} << 30;
// Longer delays are noticeable.
constexpr milliseconds Late{200};

// Sends the window a message every 20 ms while the object exists, and records the longest time
// until an answer.
class Probe {
 public:
  explicit Probe(const RunningWindow& window)
      : thread_([this, &window] {
          while (!ends_) {
            const auto sent = steady_clock::now();
            window.Ping();
            longest_ = std::max(longest_.load(), steady_clock::now() - sent);
            ++count_;
            std::this_thread::sleep_for(milliseconds(20));
          }
        }) {}
  ~Probe() { End(); }
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

  milliseconds Longest() {
    End();
    return duration_cast<milliseconds>(longest_.load());
  }
  int Count() const { return count_; }

 private:
  void End() {
    ends_ = true;
    if (thread_.joinable()) thread_.join();
  }

  std::atomic<bool> ends_ = false;
  std::atomic<steady_clock::duration> longest_ = steady_clock::duration::zero();
  std::atomic<int> count_ = 0;
  std::thread thread_;  // last: it uses all of the above
};

// How long an action of the user takes.
template <typename Action>
milliseconds Timed(Action action) {
  const auto start = steady_clock::now();
  action();
  return duration_cast<milliseconds>(steady_clock::now() - start);
}

struct Slowest {
  milliseconds move{0};
  milliseconds resize{0};
  milliseconds scroll{0};
};

// Moves, resizes and scrolls for this long, or until hashing ends.
Slowest UseTheWindow(const RunningWindow& window, milliseconds duration) {
  Slowest slowest;
  const Size outer = window.OuterSize();
  const auto end = steady_clock::now() + duration;
  const int rows = window.RowCount();
  for (int i = 0; steady_clock::now() < end && window.IsShown(IDC_CANCEL); ++i) {
    slowest.move = std::max(slowest.move, Timed([&] { window.MoveTo(i % 100, i % 60); }));
    slowest.resize = std::max(slowest.resize, Timed([&] {
                                window.Resize({outer.width + i % 50, outer.height + i % 40});
                              }));
    slowest.scroll = std::max(slowest.scroll, Timed([&] { window.ScrollToRow(i * 997 % rows); }));
    std::this_thread::sleep_for(milliseconds(20));
  }
  return slowest;
}

// Starts from the beginning each time, so that the work lasts long enough for the test.
void StartWork(const RunningWindow& window, const std::vector<std::u16string>& paths) {
  window.Command(ID_CLEAR_LIST);
  window.Drop(paths);
  ASSERT_TRUE(WaitFor([&] { return window.IsShown(IDC_CANCEL); }));
}

// On a busy machine an answer is late occasionally; an unresponsive window is late in every one of
// these periods.
void ExpectWindowResponds(const RunningWindow& window, const std::vector<std::u16string>& paths,
                          const char* during) {
  constexpr int periods = 4;
  milliseconds best = milliseconds::max();
  for (int i = 0; i < periods && best >= Late; ++i) {
    StartWork(window, paths);
    Probe probe(window);
    const Slowest slowest = UseTheWindow(window, seconds(1));
    std::printf("%s: longest of %d answers %d ms; move %d ms, resize %d ms, scroll %d ms\n", during,
                probe.Count(), static_cast<int>(probe.Longest().count()),
                static_cast<int>(slowest.move.count()), static_cast<int>(slowest.resize.count()),
                static_cast<int>(slowest.scroll.count()));
    EXPECT_GT(probe.Count(), 5);
    best =
        std::min(best, std::max({probe.Longest(), slowest.move, slowest.resize, slowest.scroll}));
  }
  EXPECT_LT(best, Late) << during;
}

void ExpectCancelWorksAtOnce(const RunningWindow& window,
                             const std::vector<std::u16string>& paths) {
  StartWork(window, paths);
  EXPECT_LT(Timed([&] { window.Click(IDC_CANCEL); }), Late);
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_CANCEL); }, seconds(2)));
}

TEST(ResponsivenessTest, DuringOneLongFile) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"long.bin");
  swr::testing::ResizeFile(file, 4 * GiB);
  const RunningWindow window;
  ExpectWindowResponds(window, {file}, "during a file of 4 GiB");
  ExpectCancelWorksAtOnce(window, {file});
}

TEST(ResponsivenessTest, DuringTwentyThousandSmallFiles) {
  constexpr int fileCount = 20'000;
  constexpr int filesPerFolder = 500;
  TempTree tree;
  for (int i = 0; i < fileCount; ++i) {
    const std::string name = std::to_string(i / filesPerFolder) + "/" + std::to_string(i);
    tree.AddFile(std::u16string(name.begin(), name.end()), name);
  }
  const RunningWindow window;
  ExpectWindowResponds(window, {tree.Root()}, "during 20,000 small files");
  ExpectCancelWorksAtOnce(window, {tree.Root()});
  // Cancel may have ended the lookup of the folder as well; dropped again, it is added completely.
  EXPECT_LE(window.RowCount(), fileCount);
  window.Drop({tree.Root()});
  EXPECT_TRUE(WaitFor([&] { return window.RowCount() == fileCount; }));
  window.WaitUntilIdle();
  for (const std::u16string& status : window.Column(u"Status")) {
    ASSERT_TRUE(status == u"Done" || status == u"Cancelled");
  }
}

}  // namespace
}  // namespace app::testing
