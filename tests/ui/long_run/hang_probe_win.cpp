#include "tests/ui/long_run/hang_probe_win.h"

#include <algorithm>
#include <utility>

namespace app::testing {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds Pause{20};
constexpr milliseconds Noticeable{200};

}  // namespace

HangProbe::HangProbe(HWND window, milliseconds longest, std::function<void()> hung)
    : asking_([=, this] { Ask(window, longest, hung); }), sleeping_([this] { Sleep(); }) {}

HangProbe::~HangProbe() {
  ends_ = true;
  asking_.join();
  sleeping_.join();
}

// A window that is gone gives no answer at once; that it is gone is for others to notice.
void HangProbe::Ask(HWND window, milliseconds longest, const std::function<void()>& hung) {
  bool isTold = false;
  while (!ends_) {
    const auto asked = steady_clock::now();
    const long long pausesBefore = pauses_;
    DWORD_PTR answer = 0;
    bool isAnswered = false;
    while (!ends_ && !isAnswered && IsWindow(window)) {
      isAnswered = SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL,
                                       static_cast<UINT>(longest.count()), &answer) != 0;
      auto time = duration_cast<milliseconds>(steady_clock::now() - asked).count();
      if (time > Noticeable.count()) {
        // The other thread has to wake up too before it can tell.
        std::this_thread::sleep_for(4 * Pause);
        time -= std::min<long long>(time, pauses_ - pausesBefore);
      }
      longest_ = std::max<long long>(longest_, time);
      if (time > longest.count() && !std::exchange(isTold, true)) hung();
    }
    ++questions_;
    std::this_thread::sleep_for(Pause);
  }
}

void HangProbe::Sleep() {
  while (!ends_) {
    const auto start = steady_clock::now();
    std::this_thread::sleep_for(Pause);
    const auto late = duration_cast<milliseconds>(steady_clock::now() - start - Pause).count();
    pause_ = std::max<long long>(pause_, late);
    if (late > Noticeable.count()) pauses_ += late;
  }
}

}  // namespace app::testing
