// Runs the tests of the real window:
//   window_tests.exe SUMWRIGHT.EXE [GOOGLETEST OPTION...]
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/dpi_awareness_win.h"
#include "tests/support/selected_tests.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/running_window_win.h"

namespace {

// Ends the process when a test takes too long, so that a hanging window does not block the run.
class Watchdog final : public testing::EmptyTestEventListener {
 public:
  Watchdog() : thread_([this] { Watch(); }) {}
  ~Watchdog() override {
    {
      const std::lock_guard lock(mutex_);
      ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  void OnTestStart(const testing::TestInfo& test) override {
    SetTest(std::string(test.test_suite_name()) + "." + test.name());
  }
  void OnTestEnd(const testing::TestInfo&) override { SetTest({}); }

 private:
  static constexpr std::chrono::seconds longestTest{240};

  void SetTest(std::string name) {
    {
      const std::lock_guard lock(mutex_);
      test_ = std::move(name);
      ++number_;
    }
    changed_.notify_all();
  }

  void Watch() {
    std::unique_lock lock(mutex_);
    while (!ends_) {
      const int watched = number_;
      const bool moved =
          changed_.wait_for(lock, longestTest, [&] { return ends_ || number_ != watched; });
      if (moved || test_.empty()) continue;
      std::fprintf(stderr, "%s does not end\n", test_.c_str());
      app::testing::TerminatePrograms();
      std::_Exit(3);
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  bool ends_ = false;
  std::string test_;
  int number_ = 0;
  std::thread thread_;  // last: it uses all of the above
};

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount == 3 && std::string(arguments[1]) == app::testing::BrowserOption) {
    const std::string address = arguments[2];
    app::testing::RecordOpenedAddress(std::wstring(address.begin(), address.end()));
    return 0;
  }
  const std::string self = arguments[0];
  if (self.find("swrhash") != std::string::npos) {
    std::wstring given;
    for (int i = 1; i < argumentCount; ++i) {
      const std::string argument = arguments[i];
      given += (i > 1 ? L" " : L"") + std::wstring(argument.begin(), argument.end());
    }
    app::testing::RecordToolRun(given);
    return 0;
  }
  testing::InitGoogleTest(&argumentCount, arguments);
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: window_tests SUMWRIGHT.EXE [GOOGLETEST OPTION...]\n");
    return 2;
  }
  swr::testing::BecomeDpiAware();
  app::testing::SetProgramPath(arguments[1]);
  testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);  // takes ownership
  return swr::testing::RunSelectedTests();
}
