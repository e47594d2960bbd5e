#include "swr/system/windows_api_win.h"

#include <objbase.h>
#include <oleauto.h>
#include <wbemcli.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/system/window_handles_win.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/computer_info_win.h"

namespace kit {
namespace {

using app::ComPointer;

class Text {
 public:
  explicit Text(const wchar_t* text) : text_(SysAllocString(text)) {}
  ~Text() { SysFreeString(text_); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  BSTR Get() const { return text_; }

 private:
  BSTR text_;
};

// Where such products register themselves; reading it needs no rights.
ComPointer<IWbemServices> SecurityCenter() {
  IWbemLocator* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                              reinterpret_cast<void**>(&made)))) {
    return {};
  }
  const ComPointer<IWbemLocator> locator(made);
  IWbemServices* services = nullptr;
  if (FAILED(made->ConnectServer(Text(L"root\\SecurityCenter2").Get(), nullptr, nullptr, nullptr, 0,
                                 nullptr, nullptr, &services))) {
    return {};
  }
  CoSetProxyBlanket(services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                    RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
  return ComPointer<IWbemServices>(services);
}

void AddNames(IWbemServices& services, const wchar_t* kind, std::vector<std::string>& names) {
  IEnumWbemClassObject* found = nullptr;
  const std::wstring query = std::wstring(L"SELECT displayName FROM ") + kind;
  if (FAILED(services.ExecQuery(Text(L"WQL").Get(), Text(query.c_str()).Get(),
                                WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                &found))) {
    return;
  }
  const ComPointer<IEnumWbemClassObject> products(found);
  constexpr long timeout = 10'000;  // milliseconds
  IWbemClassObject* next = nullptr;
  ULONG count = 0;
  while (found->Next(timeout, 1, &next, &count) == S_OK && count == 1) {
    const ComPointer<IWbemClassObject> product(next);
    VARIANT name;
    VariantInit(&name);
    if (SUCCEEDED(next->Get(L"displayName", 0, &name, nullptr, nullptr)) && name.vt == VT_BSTR) {
      const std::string text = swr::WideToUtf8(swr::FromWide(name.bstrVal));
      if (std::ranges::find(names, text) == names.end()) names.push_back(text);
    }
    VariantClear(&name);
  }
}

}  // namespace

std::vector<std::string> SecurityProducts() {
  std::vector<std::string> names;
  const ComPointer<IWbemServices> services = SecurityCenter();
  if (!services) return names;
  for (const wchar_t* kind : {L"AntiVirusProduct", L"FirewallProduct", L"AntiSpywareProduct"}) {
    AddNames(*services.Get(), kind, names);
  }
  return names;
}

}  // namespace kit
