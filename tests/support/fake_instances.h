// In-memory fakes of the named objects and windows through which processes find each other.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/instance/hand_over.h"
#include "swr/system/fault_injection.h"

namespace app::testing {

// Records the calls. The window appears after a number of waits.
class FakeInstances final : public InstanceSystem {
 public:
  bool AnotherInstanceExists() override {
    if (swr::InjectedFault(swr::SystemCall::InstanceMutex)) return false;
    mutexIsOpen = true;
    return anotherExists;
  }
  uint64_t PublishedWindow() override {
    if (swr::InjectedFault(swr::SystemCall::OpenMapping)) return 0;
    if (swr::InjectedFault(swr::SystemCall::MapView)) return 0;
    return waits < publishedAfter ? 0 : window;
  }
  bool IsWindow(uint64_t queried) override { return queried == window && waits >= aliveAfter; }
  void WaitForWindow() override { ++waits; }
  std::optional<std::u16string> FullPath(const std::u16string& path) override {
    if (swr::InjectedFault(swr::SystemCall::FullPath)) return std::nullopt;
    const auto found = fullPaths.find(path);
    if (found == fullPaths.end()) return std::nullopt;
    return found->second;
  }
  bool Deliver(uint64_t to, const std::u16string& payload) override {
    if (swr::InjectedFault(swr::SystemCall::DeliverMessage)) return false;
    deliveries.emplace_back(to, payload);
    return accepts;
  }

  bool anotherExists = true;
  bool mutexIsOpen = false;
  uint64_t window = 0x1'0002'0003;
  int publishedAfter = 0;
  int aliveAfter = 0;
  int waits = 0;
  std::map<std::u16string, std::u16string> fullPaths;
  bool accepts = true;
  std::vector<std::pair<uint64_t, std::u16string>> deliveries;
};

}  // namespace app::testing
