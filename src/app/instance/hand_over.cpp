#include "app/instance/hand_over.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace app {
namespace {

// Long enough for a first instance that has opened the mutex but not yet its window.
constexpr int WindowTries = 50;

// 0 when no window appeared in time.
uint64_t WaitForPublishedWindow(InstanceSystem& system) {
  for (int i = 0; i < WindowTries; ++i) {
    const uint64_t window = system.PublishedWindow();
    if (window != 0 && system.IsWindow(window)) return window;
    system.WaitForWindow();
  }
  return 0;
}

}  // namespace

std::u16string HandOverPayload(const std::vector<std::u16string>& paths) {
  std::u16string payload;
  for (const std::u16string& path : paths) {
    payload += path;
    payload += u'\0';
  }
  return payload;
}

std::optional<std::vector<std::u16string>> ReadHandOver(uint64_t mark,
                                                        std::span<const std::byte> payload) {
  if (mark != HandOverMark || payload.size() % sizeof(char16_t) != 0) return std::nullopt;
  std::u16string text(payload.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), payload.data(), payload.size());
  std::vector<std::u16string> paths;
  for (std::u16string_view rest = text; !rest.empty();) {
    const std::u16string_view path = rest.substr(0, rest.find(u'\0'));
    if (!path.empty()) paths.emplace_back(path);
    rest.remove_prefix(std::min(path.size() + 1, rest.size()));
  }
  return paths;
}

bool ForwardToFirstInstance(InstanceSystem& system, const std::vector<std::u16string>& paths) {
  // This opens the mutex even without paths, so that instances started later find this one.
  if (!system.AnotherInstanceExists() || paths.empty()) return false;
  const uint64_t window = WaitForPublishedWindow(system);
  if (window == 0) return false;
  // Relative paths depend on the current folder of this process.
  std::vector<std::u16string> fullPaths;
  for (const std::u16string& path : paths) {
    fullPaths.push_back(system.FullPath(path).value_or(path));
  }
  return system.Deliver(window, HandOverPayload(fullPaths));
}

}  // namespace app
