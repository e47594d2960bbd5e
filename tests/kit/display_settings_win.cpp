#include "tests/kit/display_settings_win.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace kit {
namespace {

// What the Settings app calls; there is no documented way to change the scaling of a screen without
// signing out. Steps are relative to the recommended scaling of the screen.
constexpr int GetDpiScale = -3;
constexpr int SetDpiScale = -4;
struct DpiScaleRequest {
  DISPLAYCONFIG_DEVICE_INFO_HEADER header;
  INT32 lowest;
  INT32 current;
  INT32 highest;
};
struct DpiScaleOrder {
  DISPLAYCONFIG_DEVICE_INFO_HEADER header;
  INT32 step;
};
constexpr std::array<int, 12> Scalings = {100, 125, 150, 175, 200, 225,
                                          250, 300, 350, 400, 450, 500};

struct Source {
  LUID adapter;
  UINT32 id;
};

std::wstring PrimaryScreen() {
  MONITORINFOEXW info = {};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info);
  return info.szDevice;
}

std::optional<Source> PrimarySource() {
  UINT32 pathCount = 0;
  UINT32 modeCount = 0;
  if (GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::vector<DISPLAYCONFIG_PATH_INFO> paths(pathCount);
  std::vector<DISPLAYCONFIG_MODE_INFO> modes(modeCount);
  if (QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths.data(), &modeCount, modes.data(),
                         nullptr) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  paths.resize(pathCount);
  const std::wstring primary = PrimaryScreen();
  for (const DISPLAYCONFIG_PATH_INFO& path : paths) {
    DISPLAYCONFIG_SOURCE_DEVICE_NAME name = {};
    name.header.type = DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME;
    name.header.size = sizeof name;
    name.header.adapterId = path.sourceInfo.adapterId;
    name.header.id = path.sourceInfo.id;
    if (DisplayConfigGetDeviceInfo(&name.header) == ERROR_SUCCESS &&
        primary == name.viewGdiDeviceName) {
      return Source{path.sourceInfo.adapterId, path.sourceInfo.id};
    }
  }
  return std::nullopt;
}

DISPLAYCONFIG_DEVICE_INFO_HEADER Header(int type, size_t size, const Source& source) {
  return {.type = static_cast<DISPLAYCONFIG_DEVICE_INFO_TYPE>(type),
          .size = static_cast<UINT32>(size),
          .adapterId = source.adapter,
          .id = source.id};
}

std::optional<DpiScaleRequest> ReadScale(const Source& source) {
  DpiScaleRequest request = {.header = Header(GetDpiScale, sizeof(DpiScaleRequest), source)};
  if (DisplayConfigGetDeviceInfo(&request.header) != ERROR_SUCCESS) return std::nullopt;
  const int recommended = -request.lowest;
  const int current = recommended + request.current;
  const int last = static_cast<int>(Scalings.size()) - 1;
  if (recommended < 0 || recommended > last || current < 0 || current > last) return std::nullopt;
  return request;
}

}  // namespace

std::optional<HighContrastSetting> ReadHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  if (!SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0)) {
    return std::nullopt;
  }
  return HighContrastSetting{
      contrast.dwFlags, contrast.lpszDefaultScheme == nullptr ? L"" : contrast.lpszDefaultScheme};
}

bool SetHighContrast(const HighContrastSetting& setting) {
  std::wstring scheme = setting.scheme;
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  contrast.dwFlags = setting.flags;
  contrast.lpszDefaultScheme = scheme.empty() ? nullptr : scheme.data();
  return SystemParametersInfoW(SPI_SETHIGHCONTRAST, sizeof contrast, &contrast, SPIF_SENDCHANGE) !=
         FALSE;
}

std::optional<int> ReadScreenScaling() {
  const std::optional<Source> source = PrimarySource();
  if (!source) return std::nullopt;
  const std::optional<DpiScaleRequest> scale = ReadScale(*source);
  if (!scale) return std::nullopt;
  return Scalings[static_cast<size_t>(scale->current - scale->lowest)];
}

bool SetScreenScaling(int percent) {
  const std::optional<Source> source = PrimarySource();
  if (!source) return false;
  const std::optional<DpiScaleRequest> scale = ReadScale(*source);
  const auto wanted = std::find(Scalings.begin(), Scalings.end(), percent);
  if (!scale || wanted == Scalings.end()) return false;
  const int step = static_cast<int>(wanted - Scalings.begin()) + scale->lowest;
  if (step < scale->lowest || step > scale->highest) return false;
  DpiScaleOrder order = {.header = Header(SetDpiScale, sizeof(DpiScaleOrder), *source),
                         .step = step};
  return DisplayConfigSetDeviceInfo(&order.header) == ERROR_SUCCESS;
}

}  // namespace kit
