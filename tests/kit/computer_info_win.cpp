#include "tests/kit/computer_info_win.h"

#include "swr/system/windows_api_win.h"

#include <shlobj.h>
#include <uxtheme.h>

#include <array>
#include <cstdio>
#include <optional>

#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/display_settings_win.h"

namespace kit {
namespace {

std::string Utf8(std::wstring_view text) { return swr::WideToUtf8(swr::FromWide(text)); }

// A function that not every version of Windows has; nullptr where it is missing.
template <typename Function>
Function* FindFunction(const wchar_t* library, const char* name) {
  const HMODULE module = GetModuleHandleW(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

std::string MachineText(const wchar_t* key, const wchar_t* name) {
  std::array<wchar_t, 512> text = {};
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr,
                   text.data(), &size) != ERROR_SUCCESS &&
      RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
          ERROR_SUCCESS) {
    return {};
  }
  return Utf8(text.data());
}

std::optional<DWORD> Number(HKEY root, const wchar_t* key, const wchar_t* name) {
  DWORD value = 0;
  DWORD size = sizeof value;
  if (RegGetValueW(root, key, name, RRF_RT_REG_DWORD | RRF_SUBKEY_WOW6464KEY, nullptr, &value,
                   &size) != ERROR_SUCCESS &&
      RegGetValueW(root, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return value;
}

// Unlike other version functions, this one does not depend on the caller's manifest.
RTL_OSVERSIONINFOW RealVersion() {
  RTL_OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof version;
  const auto get = FindFunction<LONG WINAPI(RTL_OSVERSIONINFOW*)>(L"ntdll.dll", "RtlGetVersion");
  if (get != nullptr) get(&version);
  return version;
}

constexpr wchar_t VersionKey[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::string WindowsName() {
  const RTL_OSVERSIONINFOW version = RealVersion();
  std::string name = MachineText(VersionKey, L"ProductName");
  // Windows 11 still has the product name Windows 10 there.
  constexpr DWORD firstBuildOf11 = 22000;
  const size_t ten = name.find("Windows 10");
  if (ten != name.npos && version.dwBuildNumber >= firstBuildOf11)
    name.replace(ten, 10, "Windows 11");
  std::string release = MachineText(VersionKey, L"DisplayVersion");
  if (release.empty()) release = MachineText(VersionKey, L"ReleaseId");
  if (release.empty()) release = MachineText(VersionKey, L"CSDVersion");
  if (!release.empty()) name += ", " + release;
  std::array<char, 100> numbers = {};
  std::snprintf(numbers.data(), numbers.size(), " (%lu.%lu.%lu.%lu)", version.dwMajorVersion,
                version.dwMinorVersion, version.dwBuildNumber,
                Number(HKEY_LOCAL_MACHINE, VersionKey, L"UBR").value_or(0));
  return name + numbers.data();
}

std::string WineVersion() {
  const auto get = FindFunction<const char*()>(L"ntdll.dll", "wine_get_version");
  return get == nullptr ? "" : get();
}

std::string Architecture() {
  SYSTEM_INFO info = {};
  GetNativeSystemInfo(&info);
  constexpr WORD arm64 = 12;
  // An emulated x64 or x86 program sees an emulated processor.
  const auto isWow =
      FindFunction<BOOL WINAPI(HANDLE, USHORT*, USHORT*)>(L"kernel32.dll", "IsWow64Process2");
  USHORT process = 0;
  USHORT native = 0;
  constexpr USHORT arm64Machine = 0xAA64;
  if (info.wProcessorArchitecture == arm64 ||
      (isWow != nullptr && isWow(GetCurrentProcess(), &process, &native) &&
       native == arm64Machine)) {
    return "64-bit, ARM";
  }
  return info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64 ? "64-bit" : "32-bit";
}

std::string Processor() {
  SYSTEM_INFO info = {};
  GetNativeSystemInfo(&info);
  return MachineText(L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
                     L"ProcessorNameString") +
         ", " + std::to_string(info.dwNumberOfProcessors) + " logical";
}

BOOL CALLBACK AddScreen(HMONITOR monitor, HDC, RECT*, LPARAM parameter) {
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  GetMonitorInfoW(monitor, &info);
  UINT dpi = 0;
  UINT vertical = 0;
  const auto get =
      FindFunction<HRESULT WINAPI(HMONITOR, int, UINT*, UINT*)>(L"shcore.dll", "GetDpiForMonitor");
  if (get == nullptr || FAILED(get(monitor, 0, &dpi, &vertical))) {
    const HDC screen = GetDC(nullptr);
    dpi = static_cast<UINT>(GetDeviceCaps(screen, LOGPIXELSX));
    ReleaseDC(nullptr, screen);
  }
  std::array<char, 100> text = {};
  std::snprintf(text.data(), text.size(), "%ld x %ld at %u%%%s",
                info.rcMonitor.right - info.rcMonitor.left,
                info.rcMonitor.bottom - info.rcMonitor.top, dpi * 100 / 96,
                (info.dwFlags & MONITORINFOF_PRIMARY) != 0 ? " (primary)" : "");
  auto& screens = *reinterpret_cast<std::string*>(parameter);
  screens += (screens.empty() ? "" : "; ") + std::string(text.data());
  return TRUE;
}

std::string Screens() {
  LoadLibraryExW(L"shcore.dll", nullptr, 0);
  std::string screens;
  EnumDisplayMonitors(nullptr, nullptr, AddScreen, reinterpret_cast<LPARAM>(&screens));
  if (GetSystemMetrics(SM_REMOTESESSION) != 0) screens += "; remote session";
  return screens;
}

std::string Theme() {
  std::array<wchar_t, MAX_PATH> path = {};
  std::array<wchar_t, MAX_PATH> color = {};
  std::string theme = "none";
  if (IsThemeActive() &&
      SUCCEEDED(GetCurrentThemeName(path.data(), MAX_PATH, color.data(), MAX_PATH, nullptr, 0))) {
    const std::wstring full = path.data();
    theme = Utf8(full.substr(full.rfind(L'\\') + 1)) + ", " + Utf8(color.data());
  }
  const auto light = Number(HKEY_CURRENT_USER,
                            L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                            L"AppsUseLightTheme");
  if (light) theme += *light != 0 ? "; light apps" : "; dark apps";
  const auto contrast = ReadHighContrast();
  return theme + (contrast && contrast->IsOn() ? "; high contrast" : "; no high contrast");
}

std::string Language() {
  std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> locale = {};
  GetUserDefaultLocaleName(locale.data(), LOCALE_NAME_MAX_LENGTH);
  return Utf8(locale.data()) + ", code page " + std::to_string(GetACP());
}

std::string FileSystem(const std::wstring& folder) {
  std::array<wchar_t, MAX_PATH + 1> name = {};
  const std::wstring root = folder.substr(0, 3);
  GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, name.data(),
                        static_cast<DWORD>(name.size()));
  ULARGE_INTEGER free = {};
  GetDiskFreeSpaceExW(folder.c_str(), &free, nullptr, nullptr);
  return Utf8(name.data()) + ", " + std::to_string(free.QuadPart >> 30) + " GiB free";
}

}  // namespace

std::vector<Property> ComputerInfo(const std::wstring& workFolder) {
  std::vector<Property> properties = {{"Windows", WindowsName()}, {"Kind", Architecture()}};
  if (const std::string wine = WineVersion(); !wine.empty()) {
    properties.push_back({"Not a real Windows", "Wine " + wine});
  }
  properties.push_back({"Processor", Processor()});
  properties.push_back({"Memory", std::to_string((MemorySize() + (1 << 29)) >> 30) + " GiB"});
  properties.push_back({"Screens", Screens()});
  properties.push_back({"Theme", Theme()});
  properties.push_back({"Language", Language()});
  properties.push_back({"Disk of the tests", FileSystem(workFolder)});
  properties.push_back({"Administrator rights", IsUserAnAdmin() ? "yes" : "no"});
  std::string products;
  for (const std::string& product : SecurityProducts()) {
    products += (products.empty() ? "" : "; ") + product;
  }
  properties.push_back(
      {"Security products", products.empty() ? "none that can be named" : products});
  return properties;
}

uint64_t MemorySize() {
  MEMORYSTATUSEX memory = {};
  memory.dwLength = sizeof memory;
  GlobalMemoryStatusEx(&memory);
  return memory.ullTotalPhys;
}

bool Is64BitWindows() {
  SYSTEM_INFO info = {};
  GetNativeSystemInfo(&info);
  return info.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
}

}  // namespace kit
