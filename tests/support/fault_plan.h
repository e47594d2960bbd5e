// Makes chosen system calls fail, runs something just before them, or makes them slow, for the
// lifetime of the object. It also counts the calls.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "swr/system/fault_injection.h"

namespace swr::testing {

struct PlannedFault {
  SystemCall call;
  uint32_t nth = 1;              // of this kind, from 1; 0 means every call
  std::optional<uint32_t> code;  // the error; nothing to let the call proceed
  std::function<void()> before;  // runs on the calling thread before the call fails or proceeds
};

// Whether the call accesses the disk or the network.
inline bool CanBeSlow(SystemCall call) {
  switch (call) {
    case SystemCall::OpenFile:
    case SystemCall::FileKind:
    case SystemCall::ReadFile:
    case SystemCall::CreateNewFile:
    case SystemCall::WriteFile:
    case SystemCall::FileInfo:
    case SystemCall::PathInfo:
    case SystemCall::ListDirectory:
    case SystemCall::NextEntry:
    case SystemCall::EntryInfo:
      return true;
    default:
      return false;
  }
}

// Only one may exist at a time. Calls may come from several threads.
class InstalledFaults final : public FaultPlan {
 public:
  // `delay` is added to every call that can be slow.
  explicit InstalledFaults(std::vector<PlannedFault> faults = {},
                           std::chrono::milliseconds delay = {})
      : faults_(std::move(faults)), delay_(delay) {
    installedFaultPlan.store(this, std::memory_order_release);
  }
  ~InstalledFaults() override { installedFaultPlan.store(nullptr, std::memory_order_release); }
  InstalledFaults(const InstalledFaults&) = delete;
  InstalledFaults& operator=(const InstalledFaults&) = delete;

  std::optional<uint32_t> Fault(SystemCall call) override {
    const uint32_t nth = ++counts_[static_cast<size_t>(call)];
    if (delay_.count() > 0 && CanBeSlow(call)) std::this_thread::sleep_for(delay_);
    for (const PlannedFault& fault : faults_) {
      if (fault.call != call || (fault.nth != 0 && fault.nth != nth)) continue;
      if (fault.before) fault.before();
      if (fault.code) return fault.code;
    }
    return std::nullopt;
  }

  // The number of calls so far, including those that failed.
  uint32_t Count(SystemCall call) const { return counts_[static_cast<size_t>(call)]; }

 private:
  const std::vector<PlannedFault> faults_;
  const std::chrono::milliseconds delay_;
  std::array<std::atomic<uint32_t>, SystemCallCount> counts_ = {};
};

}  // namespace swr::testing
