#include "app/flows/saved_settings.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace app {
namespace {

constexpr char16_t AlgorithmsName[] = u"Algorithms";
constexpr char16_t UppercaseName[] = u"Uppercase";
constexpr char16_t ShowLegacyName[] = u"ShowLegacy";
constexpr char16_t IncludeHiddenName[] = u"IncludeHidden";
constexpr char16_t CrLfName[] = u"CrLf";
constexpr char16_t ColumnsName[] = u"Columns";
constexpr char16_t WindowName[] = u"Window";

// Stored widths outside this range are ignored.
constexpr uint32_t NarrowestColumn = 30;
constexpr uint32_t WidestColumn = 2000;

// Consecutive 32-bit little-endian numbers.
template <size_t Count>
std::array<uint8_t, Count * 4> BytesOf(const std::array<uint32_t, Count>& numbers) {
  std::array<uint8_t, Count* 4> bytes = {};
  for (size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<uint8_t>(numbers[i / 4] >> (i % 4 * 8));
  }
  return bytes;
}

template <size_t Count>
std::optional<std::array<uint32_t, Count>> ReadNumbers(SettingsStore& store,
                                                       const std::u16string& name) {
  std::array<uint8_t, Count* 4> bytes = {};
  if (!store.ReadBinarySetting(name, bytes)) return std::nullopt;
  std::array<uint32_t, Count> numbers = {};
  for (size_t i = 0; i < bytes.size(); ++i) numbers[i / 4] |= uint32_t{bytes[i]} << (i % 4 * 8);
  return numbers;
}

}  // namespace

void SavedSettings::Read() {
  const auto isSet = [&](const char16_t* name) {
    return store_.ReadDwordSetting(name).value_or(0) != 0;
  };
  options_.uppercase = isSet(UppercaseName);
  options_.showLegacy = isSet(ShowLegacyName);
  options_.includeHidden = isSet(IncludeHiddenName);
  options_.crLf = isSet(CrLfName);
  options_.algorithms =
      swr::AlgosFromSaved(store_.ReadDwordSetting(AlgorithmsName).value_or(0), options_.showLegacy);
  if (const auto saved = ReadNumbers<FixedColumns.size()>(store_, ColumnsName)) {
    FixedColumnWidths widths = columns_.Widths();
    for (size_t i = 0; i < widths.size(); ++i) {
      const uint32_t width = (*saved)[i];
      if (width >= NarrowestColumn && width <= WidestColumn) widths[i] = width;
    }
    columns_.SetWidths(widths);
  }
}

bool SavedSettings::RestorePlacement() {
  const auto saved = ReadNumbers<5>(store_, WindowName);
  if (!saved) return false;
  const WindowPlacement placement = {.left = static_cast<int32_t>((*saved)[0]),
                                     .top = static_cast<int32_t>((*saved)[1]),
                                     .right = static_cast<int32_t>((*saved)[2]),
                                     .bottom = static_cast<int32_t>((*saved)[3]),
                                     .maximized = (*saved)[4] != 0};
  return placement_.MoveTo(placement) && placement.maximized;
}

void SavedSettings::Write() {
  store_.WriteDwordSetting(AlgorithmsName, options_.algorithms);
  store_.WriteDwordSetting(UppercaseName, options_.uppercase ? 1 : 0);
  store_.WriteDwordSetting(ShowLegacyName, options_.showLegacy ? 1 : 0);
  store_.WriteDwordSetting(IncludeHiddenName, options_.includeHidden ? 1 : 0);
  store_.WriteDwordSetting(CrLfName, options_.crLf ? 1 : 0);
  columns_.ReadWidths();
  store_.WriteBinarySetting(ColumnsName, BytesOf(columns_.Widths()));
  if (const std::optional<WindowPlacement> placement = placement_.Placement()) {
    store_.WriteBinarySetting(
        WindowName,
        BytesOf<5>({static_cast<uint32_t>(placement->left), static_cast<uint32_t>(placement->top),
                    static_cast<uint32_t>(placement->right),
                    static_cast<uint32_t>(placement->bottom), placement->maximized ? 1U : 0U}));
  }
}

}  // namespace app
