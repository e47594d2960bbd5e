#include "swr/system/full_path.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "swr/system/fault_injection.h"
#include "swr/system/path_bytes_posix.h"

namespace swr {
namespace {

// Whether the path is absolute and has no step that would be left out or resolved.
bool IsFull(std::u16string_view path) {
  if (!path.starts_with(u'/') || path.size() == 1) return path == u"/";
  while (!path.empty()) {
    path.remove_prefix(1);
    const std::u16string_view step = path.substr(0, path.find(u'/'));
    if (step.empty() || step == u"." || step == u"..") return false;
    path.remove_prefix(step.size());
  }
  return true;
}

}  // namespace

std::optional<std::u16string> SystemFullPath(const std::u16string& path) {
  if (path.empty() || InjectedFault(SystemCall::FullPath)) return std::nullopt;
  if (path.size() <= LongestFullPath && IsFull(path)) return path;  // as the paths of walks are
  std::u16string absolute;
  if (path.front() != u'/') {
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    if (error) return std::nullopt;
    absolute = PathTextFromBytes(current.native());
  }
  absolute += u'/';
  absolute += path;

  std::vector<std::u16string_view> steps;
  steps.reserve(16);
  std::u16string_view rest = absolute;
  while (!rest.empty()) {
    const size_t end = rest.find(u'/');
    const std::u16string_view step = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    if (step.empty() || step == u".") continue;
    if (step != u"..") {
      steps.push_back(step);
    } else if (!steps.empty()) {
      steps.pop_back();
    }
  }
  std::u16string full;
  full.reserve(absolute.size());
  for (const std::u16string_view step : steps) {
    full += u'/';
    full += step;
  }
  if (full.empty()) full = u"/";
  if (full.size() > LongestFullPath) return std::nullopt;
  return full;
}

}  // namespace swr
