// The named objects through which the program's processes find each other. They are local to the
// user's session.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/instance/hand_over.h"

namespace app {

class WindowsInstanceSystem final : public InstanceSystem {
 public:
  bool AnotherInstanceExists() override;
  uint64_t PublishedWindow() override;
  bool IsWindow(uint64_t window) override;
  void WaitForWindow() override;
  std::optional<std::u16string> FullPath(const std::u16string& path) override;
  bool Deliver(uint64_t window, const std::u16string& payload) override;
};

// From now on other processes hand their paths to this window, until another one is published.
// Called on the window's thread. Has no effect when the system is out of resources.
void PublishMainWindow(HWND window);

}  // namespace app
