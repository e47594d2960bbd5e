// Reads and changes the shell entries of the program: in Explorer's menu and in the Send To folder.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>
#include <vector>

namespace app::testing {

// A text value; nothing when there is no text value with this name.
std::optional<std::u16string> RegistryText(HKEY hive, const std::u16string& key,
                                           const std::u16string& name);
void SetRegistryText(HKEY hive, const std::u16string& key, const std::u16string& name,
                     const std::u16string& text);
void DeleteRegistryKey(HKEY hive, const std::u16string& key);

std::u16string SendToLinkPath();
// Nothing when the link does not exist or can't be read.
struct LinkContent {
  std::u16string target;
  std::u16string description;
  std::u16string icon;
  int iconIndex = 0;

  bool operator==(const LinkContent&) const = default;
};
std::optional<LinkContent> ReadSendToLink();

}  // namespace app::testing
