// Everything of the user's that tests of the real window change.
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
  // Settings, Explorer entries, and keys that tests create for themselves.
  std::vector<RegistryCopy> keys;
  // The bytes of the link in the Send To menu; nothing when there is none.
  std::optional<std::string> sendToLink;
  ClipboardCopy clipboard;
  std::optional<HighContrastSetting> highContrast;
  std::optional<int> screenScaling;
  // The foreground lock timeout in ms (SPI_GETFOREGROUNDLOCKTIMEOUT).
  std::optional<DWORD> foregroundLock;
  // The folder of the run's own files, which is removed.
  std::wstring workFolder;
};

// Throws std::runtime_error when something can't be read, in which case nothing should be changed.
UserState CopyUserState(const std::wstring& workFolder);
// Restores everything, and removes the work folder. Continues after a failure. Returns one sentence
// for each thing that could not be restored.
std::vector<std::string> RestoreUserState(const UserState& state);

std::string RecordOf(const UserState& state);
// Throws std::runtime_error when the bytes are not a complete record.
UserState ReadUserState(const std::string& record);

// Allows programs that the kit starts to come to the foreground during the tests.
void AllowForeground();

}  // namespace kit
