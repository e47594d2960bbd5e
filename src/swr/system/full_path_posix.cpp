#include "swr/system/full_path.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "swr/system/fault_injection.h"
#include "swr/system/path_bytes_posix.h"

namespace swr {
namespace {

// Whether the path is absolute and has no component that would be dropped or resolved.
bool IsFull(std::u16string_view path) {
  if (!path.starts_with(u'/') || path.size() == 1) return path == u"/";
  while (!path.empty()) {
    path.remove_prefix(1);
    const std::u16string_view component = path.substr(0, path.find(u'/'));
    if (component.empty() || component == u"." || component == u"..") return false;
    path.remove_prefix(component.size());
  }
  return true;
}

}  // namespace

std::optional<std::u16string> SystemFullPath(const std::u16string& path) {
  if (path.empty() || InjectedFault(SystemCall::FullPath)) return std::nullopt;
  if (path.size() <= LongestFullPath && IsFull(path)) return path;  // like the paths from walks
  std::u16string absolute;
  if (path.front() != u'/') {
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    if (error) return std::nullopt;
    absolute = PathTextFromBytes(current.native());
  }
  absolute += u'/';
  absolute += path;

  std::vector<std::u16string_view> components;
  components.reserve(16);
  std::u16string_view rest = absolute;
  while (!rest.empty()) {
    const size_t end = rest.find(u'/');
    const std::u16string_view component = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    if (component.empty() || component == u".") continue;
    if (component != u"..") {
      components.push_back(component);
    } else if (!components.empty()) {
      components.pop_back();
    }
  }
  std::u16string full;
  full.reserve(absolute.size());
  for (const std::u16string_view component : components) {
    full += u'/';
    full += component;
  }
  if (full.empty()) full = u"/";
  if (full.size() > LongestFullPath) return std::nullopt;
  return full;
}

}  // namespace swr
