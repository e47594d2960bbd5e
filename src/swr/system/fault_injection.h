// Lets a test make the system fail. Each function that calls the system on the way of hashing,
// walking, reading, saving, settings and hand-over asks here first; outside tests nothing is
// installed and the question costs one load.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace swr {

enum class SystemCall : uint8_t {
  OpenFile,
  FileKind,  // whether what was opened is a file, or a pipe or device
  ReadFile,
  CreateNewFile,
  WriteFile,
  FileInfo,
  PathInfo,
  ListDirectory,
  NextEntry,  // of a listing, its end included
  EntryInfo,  // what a listing asks of an entry beside its name; Windows tells it with the name
  FullPath,
  OpenDigestProvider,
  CreateDigest,
  // Of the program, beside the core.
  ReadSetting,
  WriteSetting,
  InstanceMutex,
  OpenMapping,
  CreateMapping,
  MapView,
  DeliverMessage,
};
inline constexpr size_t SystemCallCount = static_cast<size_t>(SystemCall::DeliverMessage) + 1;

class FaultPlan {
 public:
  virtual ~FaultPlan() = default;
  // The Windows error code with which this call is to fail, which may be 0; nothing to let it go
  // ahead. May be called from several threads at once.
  virtual std::optional<uint32_t> Fault(SystemCall call) = 0;
};

// Owned by the test that installs it; null outside tests.
inline std::atomic<FaultPlan*> installedFaultPlan = nullptr;

inline std::optional<uint32_t> InjectedFault(SystemCall call) {
  FaultPlan* plan = installedFaultPlan.load(std::memory_order_acquire);
  return plan == nullptr ? std::nullopt : plan->Fault(call);
}

}  // namespace swr
