// Makes each call of the system that something leads to fail in turn, once with each of a handful
// of codes that real systems give.
//
// What is tried is a scenario, a class that is made anew for each turn: its constructor prepares;
// Run() does what is tested, and one call in it fails; Check() is told which one, if any, and looks
// at the outcome. Only in Run() something fails.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "tests/support/fault_plan.h"
#include "tests/support/own_resources.h"

namespace swr::testing {

struct FaultCode {
  const char* name;
  uint32_t code;
};
inline constexpr FaultCode faultCodes[] = {
    {"missing", ErrorFileNotFound},         {"denied", ErrorAccessDenied},
    {"sharing", ErrorSharingViolation},     {"bad sector", ErrorCrc},
    {"network gone", ErrorNetworkNameGone}, {"disk full", ErrorDiskFull},
    {"handle closed", ErrorInvalidHandle},
};

struct FailedCall {
  SystemCall call;
  uint32_t nth;  // among those of its kind, counted from 1
  uint32_t code;
};
using MaybeFailed = std::optional<FailedCall>;

inline bool HasFailed(const MaybeFailed& failed, SystemCall call) {
  return failed && failed->call == call;
}
inline bool HasFailed(const MaybeFailed& failed, SystemCall call, uint32_t nth) {
  return HasFailed(failed, call) && failed->nth == nth;
}

inline std::string NameOf(SystemCall call) {
  static constexpr const char* names[] = {
      "OpenFile",      "FileKind",           "ReadFile",      "CreateNewFile", "WriteFile",
      "FileInfo",      "PathInfo",           "ListDirectory", "NextEntry",     "EntryInfo",
      "FullPath",      "OpenDigestProvider", "CreateDigest",  "ReadSetting",   "WriteSetting",
      "InstanceMutex", "OpenMapping",        "CreateMapping", "MapView",       "DeliverMessage"};
  static_assert(std::size(names) == SystemCallCount);
  return names[static_cast<size_t>(call)];
}

using CallCounts = std::array<uint32_t, SystemCallCount>;

// One turn. The calls that it came to.
template <typename Scenario>
CallCounts RunScenario(const MaybeFailed& failed) {
  std::vector<PlannedFault> planned;
  if (failed) planned.push_back({.call = failed->call, .nth = failed->nth, .code = failed->code});
  CallCounts counts = {};
  Scenario scenario;
  {
    const InstalledFaults faults(std::move(planned));
    scenario.Run();
    for (size_t i = 0; i < counts.size(); ++i) counts[i] = faults.Count(static_cast<SystemCall>(i));
  }
  scenario.Check(failed);
  return counts;
}

// Runs a turn and looks at what it leaves open. The first of its kind can bring something about
// that the system keeps until the end of the process; so only what every one of several leaves
// counts.
template <typename Scenario>
CallCounts RunWithoutLeak(const MaybeFailed& failed) {
  constexpr int tries = 4;
  CallCounts counts = {};
  for (int i = 1; i <= tries; ++i) {
    const OwnResources before = CountOwnResources();
    counts = RunScenario<Scenario>(failed);
    if (WaitForResources(before) == before) break;
    if (i == tries) ADD_FAILURE() << "it leaves something open each time";
  }
  return counts;
}

// All turns. The number of failures tried goes into the test's record.
template <typename Scenario>
void FailEachCall() {
  RunScenario<Scenario>(std::nullopt);  // does what is done once a process
  const CallCounts calls = RunWithoutLeak<Scenario>(std::nullopt);
  int failures = 0;
  for (size_t i = 0; i < calls.size(); ++i) {
    const auto call = static_cast<SystemCall>(i);
    for (uint32_t nth = 1; nth <= calls[i]; ++nth) {
      for (const FaultCode& code : faultCodes) {
        SCOPED_TRACE(NameOf(call) + " " + std::to_string(nth) + " of " + std::to_string(calls[i]) +
                     ": " + code.name);
        const CallCounts made = RunWithoutLeak<Scenario>(FailedCall{call, nth, code.code});
        EXPECT_GE(made[i], nth) << "it was never called";
        ++failures;
      }
    }
  }
  EXPECT_GT(failures, 0);
  ::testing::Test::RecordProperty("failures", failures);
}

}  // namespace swr::testing
