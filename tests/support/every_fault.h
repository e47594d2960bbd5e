// Systematic fault injection: makes each system call of an operation fail in turn, with each of
// several codes that real systems return.
//
// The operation is a scenario, a class of which each run creates a new object: the constructor
// prepares; Run() performs the operation, in which one call fails; Check() receives the call that
// failed, if any, and checks the outcome. Calls fail only in Run().
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
  static constexpr const char* names[] = {"OpenFile",
                                          "FileKind",
                                          "ReadFile",
                                          "CreateNewFile",
                                          "WriteFile",
                                          "FlushFile",
                                          "RenameFile",
                                          "WriteStream",
                                          "FileInfo",
                                          "PathInfo",
                                          "ListDirectory",
                                          "NextEntry",
                                          "EntryInfo",
                                          "FullPath",
                                          "OpenDigestProvider",
                                          "CreateDigest",
                                          "CreateReusableDigest",
                                          "ReadSetting",
                                          "WriteSetting",
                                          "InstanceMutex",
                                          "OpenMapping",
                                          "CreateMapping",
                                          "MapView",
                                          "DeliverMessage",
                                          "StartThread"};
  static_assert(std::size(names) == SystemCallCount);
  return names[static_cast<size_t>(call)];
}

using CallCounts = std::array<uint32_t, SystemCallCount>;

// Performs one run and returns the number of calls of each kind.
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

// Performs a run and checks that it leaks no handle or thread. The first run of a kind may create
// something that the system keeps until the process ends, so it is a leak only if each of several
// runs increases the count.
template <typename Scenario>
CallCounts RunWithoutLeak(const MaybeFailed& failed) {
  constexpr int tries = 4;
  CallCounts counts = {};
  for (int i = 1; i <= tries; ++i) {
    const OwnResources before = CountOwnResources();
    counts = RunScenario<Scenario>(failed);
    if (WaitForResources(before) == before) break;
    if (i == tries) ADD_FAILURE() << "every run leaves something open";
  }
  return counts;
}

// Performs all runs. Records the number of injected failures as a test property.
template <typename Scenario>
void FailEachCall() {
  RunScenario<Scenario>(std::nullopt);  // warm-up, for what happens once per process
  const CallCounts calls = RunWithoutLeak<Scenario>(std::nullopt);
  int failures = 0;
  for (size_t i = 0; i < calls.size(); ++i) {
    const auto call = static_cast<SystemCall>(i);
    for (uint32_t nth = 1; nth <= calls[i]; ++nth) {
      for (const FaultCode& code : faultCodes) {
        SCOPED_TRACE(NameOf(call) + " " + std::to_string(nth) + " of " + std::to_string(calls[i]) +
                     ": " + code.name);
        const CallCounts made = RunWithoutLeak<Scenario>(FailedCall{call, nth, code.code});
        EXPECT_GE(made[i], nth) << "the call was never made";
        ++failures;
      }
    }
  }
  EXPECT_GT(failures, 0);
  ::testing::Test::RecordProperty("failures", failures);
}

}  // namespace swr::testing
