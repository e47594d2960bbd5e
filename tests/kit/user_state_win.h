// All that tests of the real window change of what belongs to the user.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>
#include <vector>

#include "tests/kit/clipboard_copy_win.h"
#include "tests/kit/display_settings_win.h"
#include "tests/kit/registry_copy_win.h"

namespace kit {

struct UserState {
  // Settings, Explorer entries, and what tests leave for themselves.
  std::vector<RegistryCopy> keys;
  // The bytes of the link in the Send To menu; nothing when there is none.
  std::optional<std::string> sendToLink;
  ClipboardCopy clipboard;
  std::optional<HighContrastSetting> highContrast;
  std::optional<int> screenScaling;
  // How long a program that the user does not work with is kept from the foreground, in ms.
  std::optional<DWORD> foregroundLock;
  // The folder of the run's own files, to be removed.
  std::wstring workFolder;
};

// Throws std::runtime_error when something can't be read, in which case nothing should be changed.
UserState CopyUserState(const std::wstring& workFolder);
// Makes everything what it was, and removes the work folder. Goes on after a failure. Gives one
// sentence for each thing that could not be put back.
std::vector<std::string> PutUserStateBack(const UserState& state);

std::string RecordOf(const UserState& state);
// Throws std::runtime_error when these are not the bytes of a whole record.
UserState ReadUserState(const std::string& record);

// For the tests' time: programs that the kit starts may come to the foreground.
void AllowForeground();

}  // namespace kit
