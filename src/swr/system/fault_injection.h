// Lets a test make the system fail. Each function of this folder that calls the system asks here
// first; outside tests nothing is installed and the question costs one load.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace swr {

enum class SystemCall : uint8_t {
  OpenFile,
  ReadFile,
  CreateNewFile,
  WriteFile,
  FileFacts,
  PathFacts,
  ListDirectory,
  OpenDigestProvider,
  CreateDigest,
};

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
