// Reads menus that belong to another process.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/ui/remote_call_win.h"

namespace app::testing {

struct MenuItem {
  uint32_t id = 0;      // 0 for a separator
  std::u16string text;  // as in the resource
  bool isEnabled = false;
  bool isChecked = false;
};

// `menu` is a menu handle of the process that `caller` calls. Throws std::runtime_error when the
// process does not answer.
std::vector<MenuItem> ReadMenu(const RemoteCaller& caller, uint64_t menu);

// The handle of the menu that this process has open; nothing while none is open.
std::optional<uint64_t> FindOpenMenu(DWORD processId);

}  // namespace app::testing
