// How the setup program is registered. The setup script reads the identifier from this file.
#pragma once

namespace app {

// Holds "InstallLocation", the folder that the setup chose. Never changes, or an older version
// would not be found.
inline constexpr char16_t UninstallKey[] =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
    u"{6C0E5B52-8D3A-4F0B-9E47-1A2D7C93F5E8}_is1";

}  // namespace app
