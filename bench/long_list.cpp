// The cost of a long list: the real window flows, worker and files, with a fake screen. Times are
// in seconds and do not include making the list of names.
//
//   long_list hash FOLDER        SHA-256 of each file by a FileHasher alone, in a plain loop
//   long_list hash-twice FOLDER  the same, then SHA3-256 and BLAKE3 of each file
//   long_list window FOLDER      the folder dropped on the window, until all is hashed
//   long_list box FOLDER         the same, with an expected hash that no file has
//   long_list verify FILE        a checksum file opened in the window, until all is verified
//   long_list load FILE          the same, until all its rows are in the list
//   long_list memory ROWS        bytes per row, including its texts, in a list of this many
//   long_list actions ROWS       the cost of single actions in a list of this many hashed rows
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "app/flows/type_ahead.h"
#include "app/intake/file_intake.h"
#include "app/worker/finished_jobs.h"
#include "resources/resource_ids.h"
#include "swr/paths/folder_walk.h"
#include "swr/system/thread_schedule.h"
#include "swr/text/decimal_text.h"
#include "tests/support/fake_window.h"

namespace {

using app::testing::FakeWindow;
using Clock = std::chrono::steady_clock;

constexpr swr::AlgoMask Sha256 = swr::MaskOf(swr::AlgoId::Sha256);
// The other algorithms with digests of 32 bytes.
constexpr swr::AlgoMask OtherCandidates =
    swr::MaskOf(swr::AlgoId::Sha3_256) | swr::MaskOf(swr::AlgoId::Blake3);
// A digest that no file has.
constexpr char16_t ForeignDigest[] =
    u"00000000000000000000000000000000000000000000000000000000000000ff";

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// The parts of a window with real threads.
class LoopParts {
 public:
  app::testing::FakeView view;
  app::testing::FakeDesktop desktop;

 protected:
  // Waiting jobs refer to the rows of the window, which is destroyed before the worker.
  ~LoopParts() { worker_.CancelAll(); }

  bool Announce(bool& waits) {
    const std::lock_guard lock(mutex_);
    waits = true;
    announced_.notify_one();
    return true;
  }

  std::mutex mutex_;
  std::condition_variable announced_;
  bool jobsWait_ = false;   // under mutex_
  bool filesWait_ = false;  // under mutex_
  app::FinishedJobQueue finished_{app::FinishedJobQueue::Announcements{
      .finished = [this] { return Announce(jobsWait_); }, .progress = [] { return true; }}};
  app::Worker worker_{finished_};
  app::FileIntake fileIntake_{[this] { return Announce(filesWait_); }};
  app::testing::FakeInstallSystem system_;
  app::Installation installation_{system_};
  app::MainWindow main_{app::testing::ScreenOf(view, desktop), app::testing::DesktopOf(desktop),
                        worker_, fileIntake_, installation_};
};

// The window as its dialog runs it: found files and finished jobs are announced to a loop, which
// takes them every 15 milliseconds, and the progress timer ticks every 200 milliseconds while it is
// on.
class Loop : public LoopParts, public app::testing::WindowFlows {
 public:
  Loop() : WindowFlows(main_) {
    options.algorithms = Sha256;
    main_.Start();
  }

  void RunUntilIdle() {
    RunWhile([&] { return desktop.timerRuns; });
  }
  void RunUntilLookedUp() {
    RunWhile([&] { return arrivals.Open().Any(); });
  }

  void Turn(const std::function<void()>& message) {
    const auto start = Clock::now();
    message();
    longestTurn = std::max(longestTurn, SecondsSince(start) * 1000);
  }
  // The longest time that one message took, in milliseconds.
  double longestTurn = 0;

 private:
  template <typename Condition>
  void RunWhile(Condition&& shouldContinue) {
    auto tick = Clock::now() + std::chrono::milliseconds(200);
    while (shouldContinue()) {
      {
        std::unique_lock lock(mutex_);
        announced_.wait_until(lock, tick, [&] { return jobsWait_ || filesWait_; });
        if (!jobsWait_ && !filesWait_) {
          lock.unlock();
          Turn([&] { intake.OnTimer(); });
          tick = Clock::now() + std::chrono::milliseconds(200);
          continue;
        }
      }
      const auto start = Clock::now();
      const bool foundFiles = Follow(filesWait_, [&] { return TakeFiles(); });
      const bool foundJobs = Follow(jobsWait_, [&] { return TakeResults(); });
      // As with the dialog's timers, a tick is due 15 ms after the start of the last one.
      if (foundFiles || foundJobs) {
        std::this_thread::sleep_until(start + std::chrono::milliseconds(15));
      }
    }
  }

  // After an announcement, its sender is polled until it has nothing more.
  bool Follow(bool& waits, const std::function<bool()>& take) {
    {
      const std::lock_guard lock(mutex_);
      waits = false;
    }
    if (!take()) return false;
    const std::lock_guard lock(mutex_);
    waits = true;
    return true;
  }
  // Both take as much as the dialog does in one tick. False if there was nothing to take.
  bool TakeFiles() {
    bool found = false;
    Turn([&] { found = arrivals.TakeSome(std::chrono::milliseconds(20)); });
    return found || !fileIntake_.AnnounceNext();
  }
  bool TakeResults() {
    auto taken = finished_.Take(1000);
    if (taken.empty()) return false;
    Turn([&] {
      const auto start = Clock::now();
      bool moreGathered = true;
      while (moreGathered) {
        moreGathered = taken.size() == 1000 && SecondsSince(start) < 0.035;
        intake.Take(std::move(taken));
        if (moreGathered) taken = finished_.Take(1000);
      }
    });
    if (!worker_.GetSnapshot().active) intake.OnTimer();
    return true;
  }
};

std::vector<std::u16string> FilesUnder(const std::u16string& folder) {
  std::vector<std::u16string> files;
  swr::WalkFolder(folder, {.recursive = true, .includeHidden = false},
                  [&](const swr::FoundFile& found) { files.push_back(found.path); });
  return files;
}

void Print(const char* what, double figure, const char* unit) {
  std::printf("%s\t%.6g\t%s\n", what, figure, unit);
}

void TimeHashing(const std::u16string& folder, bool twice) {
  const std::vector<std::u16string> files = FilesUnder(folder);
  // A thread like the worker's, because the scheduler treats others differently.
  std::thread([&] {
    swr::PreferThroughput();
    const auto start = Clock::now();
    swr::DigestThreads threads;
    swr::FileHasher hasher(threads);
    for (const std::u16string& file : files) hasher.HashFile(file, Sha256, {});
    for (size_t i = 0; twice && i < files.size(); ++i) {
      hasher.HashFile(files[i], OtherCandidates, {});
    }
    Print("total", SecondsSince(start), "s");
  }).join();
}

void TimeWindow(const std::u16string& path, bool isList, bool untilIdle, bool withBox) {
  Loop loop;
  if (withBox) {
    loop.view.expectedText = ForeignDigest;
    loop.expected.OnEdited();
  }
  const auto start = Clock::now();
  loop.Turn([&] {
    if (isList) {
      loop.verification.VerifyFile(path);
    } else {
      loop.adding.AddPaths({path});
    }
  });
  loop.RunUntilLookedUp();
  Print("all rows in the list", SecondsSince(start), "s");
  if (untilIdle) {
    loop.RunUntilIdle();
    Print("total", SecondsSince(start), "s");
    Print("longest message", loop.longestTurn, "ms");
  }
  std::fprintf(stderr, "%zu rows; %s; %s\n", loop.rows.Size(),
               swr::WideToUtf8(loop.view.statusText).c_str(),
               swr::WideToUtf8(loop.view.resultLine).c_str());
}

// The resident memory from /proc/self/status, in bytes.
double ResidentBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return 1024.0 * std::atof(line.c_str() + 6);
  }
  return 0;
}

// Adds rows of files that have been hashed with these algorithms.
void FillList(FakeWindow& window, size_t count, swr::AlgoMask algos) {
  const auto name = [](size_t i) { return u"photograph " + swr::DecimalText(i) + u".jpg"; };
  const std::u16string folder = u"/srv/archive/pictures of the year";
  for (size_t i = 0; i < count; ++i) {
    app::Row row;
    row.path = folder + u"/" + name(i);
    row.size = i;
    row.status = app::RowStatus::Done;
    for (const swr::AlgoId id : swr::IdsFromMask(algos)) {
      swr::DigestSlot slot;
      slot.present = true;
      slot.length = static_cast<uint8_t>(swr::GetAlgo(id).digestSize);
      const uint64_t value = i * 2654435761;
      for (size_t b = 0; b < 8; ++b) slot.bytes[b] = static_cast<uint8_t>(value >> (8 * b));
      row.digests.Set(swr::IndexOf(id), slot);
    }
    window.rows.Append(std::move(row), true);
  }
  window.algorithms.Select(algos);
  window.view.SetRowCount(count);
}

void MeasureMemory(size_t count) {
  FakeWindow window;
  const double before = ResidentBytes();
  FillList(window, count, swr::DefaultAlgoMask);
  window.expected.Compare();
  Print("a row", (ResidentBytes() - before) / static_cast<double>(count), "bytes");
}

void TimeActions(size_t count) {
  FakeWindow window;
  FillList(window, count, Sha256);
  const auto time = [](const char* what, const std::function<void()>& action) {
    const auto start = Clock::now();
    action();
    Print(what, SecondsSince(start), "s");
  };
  const auto typeAhead = [&] { app::FindRowNamed(window.rows, u"zz", count / 2, false); };
  time("type ahead, nothing found", typeAhead);
  time("sort by name", [&] { window.sorting.SortBy(0); });
  time("sort by digest", [&] { window.sorting.SortBy(3); });
  time("type ahead, sorted by digest", typeAhead);
  time("select all", [&] {
    window.view.SelectAll();
    window.details.Refresh();
  });
  time("copy all lines", [&] { window.commands.Run(ID_CTX_COPY_LINE); });
  // Overwriting an earlier file would first free its content, which takes a fifth of the time.
  constexpr char saved[] = "/tmp/long_list.sha256";
  std::remove(saved);
  window.desktop.saveTarget = {swr::Utf8ToWide(saved), 0};
  time("save", [&] { window.commands.Run(ID_SAVE_CHECKSUMS); });
  std::remove(saved);
  time("a value in the box", [&] {
    window.view.expectedText = ForeignDigest;
    window.expected.OnEdited();
  });
  time("cancel", [&] { window.edits.CancelAll(); });
  time("another algorithm", [&] { window.algorithms.Select(swr::DefaultAlgoMask); });
  // The first search makes the index by path, which the actions after it keep up to date.
  time("first search for a path", [&] { window.rows.IndexesOfPath(u"/srv/archive/none"); });
  time("remove every other row", [&] {
    window.view.selected.clear();
    for (size_t i = 0; i < count; i += 2) window.view.selected.push_back(i);
    window.RemoveRows(window.view.selected);
  });
  time("clear", [&] { window.edits.Clear(); });
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view mode = count == 3 ? arguments[1] : "";
  const std::u16string argument = count == 3 ? swr::Utf8ToWide(arguments[2]) : u"";
  const size_t number = count == 3 ? std::strtoul(arguments[2], nullptr, 10) : 0;
  if (mode == "hash" || mode == "hash-twice") {
    TimeHashing(argument, mode == "hash-twice");
  } else if (mode == "window") {
    TimeWindow(argument, false, true, false);
  } else if (mode == "box") {
    TimeWindow(argument, false, true, true);
  } else if (mode == "verify") {
    TimeWindow(argument, true, true, false);
  } else if (mode == "load") {
    TimeWindow(argument, true, false, false);
  } else if (mode == "memory") {
    MeasureMemory(number);
  } else if (mode == "actions") {
    TimeActions(number);
  } else {
    std::fputs(
        "usage: long_list hash|hash-twice|window|box|verify|load|memory|actions FOLDER|FILE|ROWS\n",
        stderr);
    return 2;
  }
  return 0;
}
