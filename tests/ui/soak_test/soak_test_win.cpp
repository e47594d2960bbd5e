// Uses the real window at random for a long time:
//   soak_test.exe SUMWRIGHT.EXE [--minutes N] [--seed N]
// See usageText below for what it does and reports.
#include "swr/system/windows_api_win.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <string>

#include "tests/support/dpi_awareness_win.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/soak_test/dice.h"
#include "tests/ui/soak_test/file_world_win.h"
#include "tests/ui/soak_test/hang_probe_win.h"
#include "tests/ui/soak_test/random_user_win.h"
#include "tests/ui/soak_test/resource_series.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr char usageText[] =
    "soak_test.exe SUMWRIGHT.EXE [--minutes N] [--seed N]\n"
    "\n"
    "Uses the window at random: drops, removes, cancels, sorts, verifies, clears, changes\n"
    "algorithms, options, size and DPI, opens dialogs and menus, starts the program again,\n"
    "and changes files on the disk. Every few dozen actions it waits until the window is\n"
    "idle and compares all rows, columns, details, lines and some colours with a reference\n"
    "model. Each time it has cleared the list, it measures the system resources that the\n"
    "program holds.\n"
    "\n"
    "Exits with 1 if the window differs from the reference model, crashes, does not respond\n"
    "for 2 seconds, or leaks resources. The same seed gives the same actions, but not the\n"
    "same timing.\n"
    "\n"
    "  --minutes N   how long to run; 2 by default\n"
    "  --seed N      seed of the random choices; 20261121 by default\n";

constexpr milliseconds LongestAnswer{2000};
constexpr size_t LoggedActions = 60;

struct Options {
  double minutes = 2;
  uint32_t seed = 20261121;
};

// The last actions, to find out what went wrong.
class ActionLog {
 public:
  explicit ActionLog(uint32_t seed) : seed_(seed) {}

  void Add(std::string action) {
    actions_.push_back(std::to_string(++count_) + " " + std::move(action));
    if (actions_.size() > LoggedActions) actions_.pop_front();
  }
  size_t Count() const { return count_; }
  void Print() const {
    std::printf("The last actions, with --seed %u:\n", seed_);
    for (const std::string& action : actions_) std::printf("  %s\n", action.c_str());
    std::fflush(stdout);
  }

 private:
  uint32_t seed_;
  size_t count_ = 0;
  std::deque<std::string> actions_;
};

ResourceSample Measure(const RunningWindow& window) {
  const ProcessResources resources = window.Resources();
  const ProcessMemory memory = window.Memory();
  return {.handles = resources.handles,
          .gdiObjects = resources.gdiObjects,
          .userObjects = resources.userObjects,
          .workingSet = memory.workingSet,
          .privateBytes = memory.privateBytes};
}

class SoakTest {
 public:
  explicit SoakTest(const Options& options)
      : options_(options), dice_(options.seed), world_(dice_), log_(options.seed) {}

  // The exit code.
  int Run() {
    std::printf("soak test: seed %u, %g minutes\n", options_.seed, options_.minutes);
    std::fflush(stdout);
    // Moves the mouse away from menus, whose entries would react to it.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    try {
      const auto start = steady_clock::now();
      const std::chrono::duration<double> length(options_.minutes * 60);
      WarmUp();
      MeasureRepeatedly();
      while (steady_clock::now() - start < length) Round();
      MeasureRepeatedly();
      if (window_.Close() != 0) return Fail("the program ended with an error");
    } catch (const std::exception& failure) {
      return Fail(failure.what());
    }
    const bool isGood = Summarize();
    return isGood ? 0 : 1;
  }

 private:
  // Performs every action once, in order, and shows the largest window.
  void WarmUp() {
    for (size_t kind = 0; kind < RandomUser::KindCount(); ++kind) Note(user_.Act(kind));
    ShowWindow(window_.Handle(), SW_MAXIMIZE);
    Compare();
    user_.ClearAll();
  }

  void Note(std::string action) {
    log_.Add(std::move(action));
    if (window_.HasEnded()) throw std::runtime_error("the program has ended");
  }

  void Compare() {
    rows_ += user_.CompareAll();
    ++comparisons_;
  }

  // Performs some actions, then one or both of the checks that need an idle window.
  void Round() {
    for (size_t actions = 10 + dice_.Pick(30); actions > 0; --actions) Note(user_.Act());
    Compare();
    if (dice_.OneIn(2)) ClearAndMeasure();
  }

  // Each of these rounds would show a leak, however short the run was.
  void MeasureRepeatedly() {
    for (size_t i = 0; i < ResourceSeries::SteadySamples; ++i) {
      user_.FillList();
      Compare();
      ClearAndMeasure();
    }
  }

  void ClearAndMeasure() {
    user_.ClearAll();
    log_.Add("cleared to measure");
    const ResourceSample sample = Measure(window_);
    resources_.Add(sample);
    std::printf(
        "after %zu actions: %llu handles, %llu GDI objects, %llu KiB in use, %llu private\n",
        log_.Count(), static_cast<unsigned long long>(sample.handles),
        static_cast<unsigned long long>(sample.gdiObjects),
        static_cast<unsigned long long>(sample.workingSet / 1024),
        static_cast<unsigned long long>(sample.privateBytes / 1024));
    std::fflush(stdout);
  }

  int Fail(const char* why) {
    std::printf("FAILED: %s\n", why);
    if (window_.HasEnded()) std::printf("the program has ended, code %d\n", window_.WaitForEnd());
    log_.Print();
    std::printf("  in progress: %s\n", user_.Doing());
    Summarize();
    return 1;
  }

  bool Summarize() const {
    std::printf("seed %u, %g minutes\n", options_.seed, options_.minutes);
    std::printf("%zu actions\n", log_.Count());
    for (const auto& [name, count] : user_.Counts()) {
      std::printf("  %zu %s\n", count, name.c_str());
    }
    std::printf("%zu comparisons of all rows, %zu rows in total\n", comparisons_, rows_);
    std::printf(
        "longest response time: %d ms, of %zu requests; the longest stall of the machine: %d ms\n",
        static_cast<int>(probe_.LongestAnswer().count()), probe_.Requests(),
        static_cast<int>(probe_.LongestPause().count()));
    const ResourceSeries::Verdict verdict = resources_.Evaluate();
    std::printf("resources, measured %zu times after Clear List:\n%s", resources_.Count(),
                verdict.text.c_str());
    const bool hung = probe_.LongestAnswer() > LongestAnswer;
    if (hung) std::printf("FAILED: the window did not respond in time\n");
    if (verdict.hasGrown) std::printf("FAILED: the program leaks resources\n");
    std::fflush(stdout);
    return !hung && !verdict.hasGrown;
  }

  Options options_;
  Dice dice_;
  FileWorld world_;
  ActionLog log_;
  RunningWindow window_;
  RandomUser user_{dice_, world_, window_};
  ResourceSeries resources_;
  size_t comparisons_ = 0;
  size_t rows_ = 0;
  HangProbe probe_{window_.Handle(), [this](milliseconds time, milliseconds machine) {
                     std::printf(
                         "responded after %d ms, of which the machine was stalled for %d ms; "
                         "at: %s\n",
                         static_cast<int>(time.count()), static_cast<int>(machine.count()),
                         user_.Doing());
                     std::fflush(stdout);
                   }};
};

}  // namespace
}  // namespace app::testing

int main(int argumentCount, char** arguments) {
  app::testing::Options options;
  std::string program;
  for (int i = 1; i < argumentCount; ++i) {
    const std::string argument = arguments[i];
    const bool hasValue = i + 1 < argumentCount;
    if (argument == "--minutes" && hasValue) {
      options.minutes = std::atof(arguments[++i]);
    } else if (argument == "--seed" && hasValue) {
      options.seed = static_cast<uint32_t>(std::strtoul(arguments[++i], nullptr, 10));
    } else if (program.empty() && argument.front() != '-') {
      program = argument;
    } else {
      std::fputs(app::testing::usageText, argument == "--help" ? stdout : stderr);
      return argument == "--help" ? 0 : 2;
    }
  }
  if (program.empty() || options.minutes <= 0) {
    std::fputs(app::testing::usageText, stderr);
    return 2;
  }
  swr::testing::BecomeDpiAware();
  app::testing::SetProgramPath(program);
  try {
    return app::testing::SoakTest(options).Run();
  } catch (const std::exception& failure) {
    std::printf("FAILED: %s\n", failure.what());
    return 1;
  }
}
