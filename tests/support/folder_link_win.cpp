#include "tests/support/folder_link_win.h"

#include "swr/system/windows_api_win.h"

#include <stdexcept>

#include "swr/system/wide_text_win.h"
#include "tests/support/host_command_win.h"
#include "tests/support/system_command_win.h"
#include "tests/support/wine_win.h"

namespace swr::testing {
namespace {

constexpr int Rounds = 500;  // of 10 ms, because the end of a host command can't be waited for

DWORD Attributes(const std::u16string& path) { return GetFileAttributesW(AsWide(path)); }

bool IsLink(const std::u16string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::wstring Quoted(const std::u16string& text) {
  return L"\"" + std::wstring(AsWide(text)) + L"\"";
}

}  // namespace

FolderLink::FolderLink(const std::u16string& path, const std::u16string& target) : path_(path) {
  if (!IsWine()) {
    RunSystemCommand(L"mklink /J " + Quoted(path) + L" " + Quoted(target));
  } else if (CanRunHostCommands()) {
    RunHostCommand(L"ln -s " + HostPath(target) + L" " + HostPath(path));
    for (int round = 0; round < Rounds && !IsLink(path); ++round) Sleep(10);
    if (!IsLink(path)) throw std::runtime_error("the host did not create a link to a folder");
  }
  isThere_ = IsLink(path);
}

FolderLink::~FolderLink() {
  if (!isThere_) return;
  if (!IsWine()) {
    RemoveDirectoryW(AsWide(path_));
    return;
  }
  RunHostCommand(L"rm " + HostPath(path_));
  for (int round = 0; round < Rounds && Attributes(path_) != INVALID_FILE_ATTRIBUTES; ++round) {
    Sleep(10);
  }
}

}  // namespace swr::testing
