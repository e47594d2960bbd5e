#include "tests/kit/kit_environment.h"

#include "swr/system/windows_api_win.h"

#include "swr/system/wide_text_win.h"

namespace app::testing {

std::u16string PictureFolder() {
  wchar_t folder[MAX_PATH] = {};
  const DWORD length = GetEnvironmentVariableW(L"SUMWRIGHT_KIT_PICTURES", folder, MAX_PATH);
  return length < MAX_PATH ? swr::FromWide({folder, length}) : u"";
}

std::u16string BesideTheTests(const std::u16string& name) {
  wchar_t path[32768] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
  const std::u16string program = swr::FromWide({path, length});
  return program.substr(0, program.rfind(u'\\') + 1) + name;
}

}  // namespace app::testing
