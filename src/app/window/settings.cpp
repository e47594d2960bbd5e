// What is kept from one run of the program to the next.
#include <array>
#include <cstdint>
#include <span>

#include "app/window/main_window.h"

namespace app {
namespace {

constexpr char16_t AlgorithmsName[] = u"Algorithms";
constexpr char16_t UppercaseName[] = u"Uppercase";
constexpr char16_t ShowLegacyName[] = u"ShowLegacy";
constexpr char16_t IncludeHiddenName[] = u"IncludeHidden";
constexpr char16_t CrLfName[] = u"CrLf";
constexpr char16_t ColumnsName[] = u"Columns";
constexpr char16_t WindowName[] = u"Window";

// A column outside these was not left so by a person.
constexpr uint32_t NarrowestColumn = 30;
constexpr uint32_t WidestColumn = 2000;

// Numbers of 32 bits in a row, the lowest byte first.
template <size_t Count>
std::array<uint8_t, Count * 4> BytesOf(const std::array<uint32_t, Count>& numbers) {
  std::array<uint8_t, Count* 4> bytes = {};
  for (size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<uint8_t>(numbers[i / 4] >> (i % 4 * 8));
  }
  return bytes;
}

template <size_t Count>
std::optional<std::array<uint32_t, Count>> ReadNumbers(Desktop& desktop,
                                                       const std::u16string& name) {
  std::array<uint8_t, Count* 4> bytes = {};
  if (!desktop.ReadBinarySetting(name, bytes)) return std::nullopt;
  std::array<uint32_t, Count> numbers = {};
  for (size_t i = 0; i < bytes.size(); ++i) numbers[i / 4] |= uint32_t{bytes[i]} << (i % 4 * 8);
  return numbers;
}

}  // namespace

void MainWindow::ReadSettings() {
  const auto isSet = [&](const char16_t* name) {
    return desktop_.ReadDwordSetting(name).value_or(0) != 0;
  };
  uppercase = isSet(UppercaseName);
  showLegacy = isSet(ShowLegacyName);
  includeHidden = isSet(IncludeHiddenName);
  crLf = isSet(CrLfName);
  algorithms =
      swr::AlgosFromSaved(desktop_.ReadDwordSetting(AlgorithmsName).value_or(0), showLegacy);
  if (const auto widths = ReadNumbers<4>(desktop_, ColumnsName)) {
    const auto take = [](uint32_t& width, uint32_t saved) {
      if (saved >= NarrowestColumn && saved <= WidestColumn) width = saved;
    };
    take(fixedWidths.name, (*widths)[0]);
    take(fixedWidths.folder, (*widths)[1]);
    take(fixedWidths.size, (*widths)[2]);
    take(fixedWidths.status, (*widths)[3]);
  }
}

void MainWindow::RestorePlacement() {
  const auto saved = ReadNumbers<5>(desktop_, WindowName);
  if (!saved) return;
  const WindowPlacement placement = {.left = static_cast<int32_t>((*saved)[0]),
                                     .top = static_cast<int32_t>((*saved)[1]),
                                     .right = static_cast<int32_t>((*saved)[2]),
                                     .bottom = static_cast<int32_t>((*saved)[3]),
                                     .maximized = (*saved)[4] != 0};
  startMaximized = view_.MoveTo(placement) && placement.maximized;
}

void MainWindow::WriteSettings() {
  desktop_.WriteDwordSetting(AlgorithmsName, algorithms);
  desktop_.WriteDwordSetting(UppercaseName, uppercase ? 1 : 0);
  desktop_.WriteDwordSetting(ShowLegacyName, showLegacy ? 1 : 0);
  desktop_.WriteDwordSetting(IncludeHiddenName, includeHidden ? 1 : 0);
  desktop_.WriteDwordSetting(CrLfName, crLf ? 1 : 0);
  SaveColumnWidths();
  desktop_.WriteBinarySetting(ColumnsName, BytesOf<4>({fixedWidths.name, fixedWidths.folder,
                                                       fixedWidths.size, fixedWidths.status}));
  if (const std::optional<WindowPlacement> placement = view_.Placement()) {
    desktop_.WriteBinarySetting(
        WindowName,
        BytesOf<5>({static_cast<uint32_t>(placement->left), static_cast<uint32_t>(placement->top),
                    static_cast<uint32_t>(placement->right),
                    static_cast<uint32_t>(placement->bottom), placement->maximized ? 1U : 0U}));
  }
}

}  // namespace app
