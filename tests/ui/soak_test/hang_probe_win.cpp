#include "tests/ui/soak_test/hang_probe_win.h"

#include <algorithm>
#include <utility>

namespace app::testing {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds Pause{20};
constexpr milliseconds Noticeable{200};
constexpr milliseconds Slow{1000};

long long MillisecondsSince(steady_clock::time_point start) {
  return duration_cast<milliseconds>(steady_clock::now() - start).count();
}

}  // namespace

HangProbe::HangProbe(HWND window, SlowAnswer report)
    : probing_([=, this] { Probe(window, report); }), sleeping_([this] { Sleep(); }) {}

HangProbe::~HangProbe() {
  ends_ = true;
  probing_.join();
  sleeping_.join();
}

// A closed window fails at once, which other parts of the test notice.
void HangProbe::Probe(HWND window, const SlowAnswer& report) {
  while (!ends_) {
    const auto sent = steady_clock::now();
    const long long pausesBefore = pauses_;
    DWORD_PTR answer = 0;
    bool isAnswered = false;
    while (!ends_ && !isAnswered && IsWindow(window)) {
      isAnswered = SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 1000, &answer) != 0;
    }
    const long long time = MillisecondsSince(sent);
    long long own = time;
    if (time > Noticeable.count()) {
      // The other thread must also wake up before it can report.
      std::this_thread::sleep_for(4 * Pause);
      own -= std::min(time, pauses_ - pausesBefore);
    }
    longest_ = std::max(longest_.load(), own);
    if (time > Slow.count()) report(milliseconds(time), milliseconds(time - own));
    ++requests_;
    std::this_thread::sleep_for(Pause);
  }
}

void HangProbe::Sleep() {
  while (!ends_) {
    const auto start = steady_clock::now();
    std::this_thread::sleep_for(Pause);
    const long long late = MillisecondsSince(start) - Pause.count();
    pause_ = std::max(pause_.load(), late);
    if (late > Noticeable.count()) pauses_ += late;
  }
}

}  // namespace app::testing
