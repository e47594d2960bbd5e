// Fault injection: lets a test make system calls fail. Each function that calls the system to hash,
// walk, read, save, store settings or hand over paths first calls InjectedFault(). Outside tests no
// plan is installed, and the call costs one atomic load.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace swr {

enum class SystemCall : uint8_t {
  OpenFile,
  FileKind,  // whether the opened object is a file, a pipe or a device
  ReadFile,
  CreateNewFile,
  WriteFile,
  FlushFile,
  RenameFile,
  WriteStream,  // to standard output or standard error
  FileInfo,
  PathInfo,
  ListDirectory,
  NextEntry,  // of a listing, including its end
  EntryInfo,  // type and size of an entry where the listing gives the name only (not on Windows)
  FullPath,
  OpenDigestProvider,
  CreateDigest,
  CreateReusableDigest,  // on Windows; after a failure each file gets a digest object of its own
  // In the program with the window, outside the core:
  ReadSetting,
  WriteSetting,
  InstanceMutex,
  OpenMapping,
  CreateMapping,
  MapView,
  DeliverMessage,
  StartThread,  // a detached one
};
inline constexpr size_t SystemCallCount = static_cast<size_t>(SystemCall::StartThread) + 1;

class FaultPlan {
 public:
  virtual ~FaultPlan() = default;
  // The Windows error code (possibly 0) with which this call fails, or nothing to let it proceed.
  // May be called by several threads at once.
  virtual std::optional<uint32_t> Fault(SystemCall call) = 0;
};

// Owned by the test that installs it; must outlive every call. Null outside tests.
inline std::atomic<FaultPlan*> installedFaultPlan = nullptr;

inline std::optional<uint32_t> InjectedFault(SystemCall call) {
  FaultPlan* plan = installedFaultPlan.load(std::memory_order_acquire);
  return plan == nullptr ? std::nullopt : plan->Fault(call);
}

}  // namespace swr
