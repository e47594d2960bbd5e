// The cost of a long list in the real window. Times are in seconds.
//
//   window_list hash FOLDER             SHA-256 of each file by a FileHasher alone, in a plain loop
//   window_list hash-twice FOLDER       the same, then SHA3-256 and BLAKE3 of each file
//   window_list drop SUMWRIGHT FOLDER   the folder dropped on the window, until all is hashed
//   window_list box SUMWRIGHT FOLDER    the same, with an expected hash that no file has
//   window_list verify SUMWRIGHT LIST   a checksum file verified, until each row has a verdict
//   window_list close SUMWRIGHT FOLDER  the window closed while files are looked up and hashed
//
// "longest message" is the longest response time, in milliseconds, as measured by another process.
#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/hash/file_hasher.h"
#include "swr/paths/folder_walk.h"
#include "swr/system/thread_schedule.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

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

void Print(const char* what, double figure, const char* unit) {
  std::printf("%s\t%.6g\t%s\n", what, figure, unit);
}

void TimeHashing(const std::u16string& folder, bool twice) {
  std::vector<std::u16string> files;
  swr::WalkFolder(folder, {.recursive = true, .includeHidden = false},
                  [&](const swr::FoundFile& found) { files.push_back(found.path); });
  // A thread like the worker's, because the scheduler treats others differently.
  std::thread([&] {
    swr::PreferThroughput();
    swr::DigestThreads digestThreads;
    swr::FileHasher hasher(digestThreads);
    const auto start = Clock::now();
    for (const std::u16string& file : files) hasher.HashFile(file, Sha256, {});
    for (size_t i = 0; twice && i < files.size(); ++i) {
      hasher.HashFile(files[i], OtherCandidates, {});
    }
    Print("total", SecondsSince(start), "s");
  }).join();
}

bool IsAtWork(const RunningWindow& window) {
  if (window.IsShown(IDC_CANCEL)) return true;
  const std::u16string line = window.Text(IDC_RESULT);
  return line.starts_with(u"Verifying") || line.starts_with(u"Checking");
}

// `start` gives the window its work.
void TimeWindow(const RunningWindow& window, const std::function<void()>& start) {
  std::atomic<bool> isOver = false;
  double longest = 0;
  std::thread probe([&] {
    while (!isOver) {
      const auto asked = Clock::now();
      window.Ping();
      longest = std::max(longest, SecondsSince(asked) * 1000);
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  });
  const auto begin = Clock::now();
  start();
  while (IsAtWork(window)) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  Print("total", SecondsSince(begin), "s");
  isOver = true;
  probe.join();
  Print("longest message", longest, "ms");
  std::fprintf(stderr, "%s; %s\n", swr::WideToUtf8(window.Text(IDC_STATUS_TEXT)).c_str(),
               swr::WideToUtf8(window.Text(IDC_RESULT)).c_str());
}

void TimeDrop(const std::u16string& folder, bool withBox) {
  const RunningWindow window({.keepSettings = true});
  if (withBox) window.SetExpected(ForeignDigest);
  TimeWindow(window, [&] { window.Drop({folder}); });
}

void TimeVerification(const std::u16string& list) {
  const RunningWindow window({.keepSettings = true});
  window.Drop({list});
  window.WaitUntilIdle();
  TimeWindow(window, [&] {
    window.FollowBannerLink(u"a");
    // A short list may be verified before the first poll.
    WaitFor([&] { return window.RowCount() > 1; });
  });
}

void TimeClosing(const std::u16string& folder) {
  RunningWindow window({.keepSettings = true});
  window.Drop({folder});
  WaitFor([&] { return window.RowCount() > 1000; });
  const int rows = window.RowCount();
  const auto begin = Clock::now();
  window.Close();
  Print("total", SecondsSince(begin), "s");
  std::fprintf(stderr, "closed with %d rows\n", rows);
}

int Run(const std::vector<std::u16string>& arguments) {
  if (arguments.size() < 3) throw std::runtime_error("usage: window_list MODE [SUMWRIGHT] PATH");
  const std::u16string& mode = arguments[1];
  if (mode == u"hash" || mode == u"hash-twice") {
    TimeHashing(arguments[2], mode == u"hash-twice");
    return 0;
  }
  if (arguments.size() != 4) throw std::runtime_error("this mode needs the program and a path");
  SetProgramPath(swr::WideToUtf8(arguments[2]));
  DeleteSettings();
  WriteSetting(u"Algorithms", Sha256);
  if (mode == u"drop" || mode == u"box") {
    TimeDrop(arguments[3], mode == u"box");
  } else if (mode == u"verify") {
    TimeVerification(arguments[3]);
  } else if (mode == u"close") {
    TimeClosing(arguments[3]);
  } else {
    throw std::runtime_error("unknown mode");
  }
  return 0;
}

}  // namespace
}  // namespace app::testing

int wmain(int count, wchar_t** values) {
  std::vector<std::u16string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(swr::FromWide(values[i]));
  try {
    return app::testing::Run(arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "window_list: %s\n", error.what());
    return 1;
  }
}
