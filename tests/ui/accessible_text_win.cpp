#include "tests/ui/accessible_text_win.h"

#include <oleacc.h>

#include <vector>

#include "app/system/window_handles_win.h"
#include "swr/system/wide_text_win.h"

namespace app::testing {
namespace {

VARIANT Child(LONG number) {
  VARIANT child;
  VariantInit(&child);
  child.vt = VT_I4;
  child.lVal = number;
  return child;
}

std::u16string TextOf(IAccessible& element, LONG number) {
  VARIANT role;
  VariantInit(&role);
  if (FAILED(element.get_accRole(Child(number), &role)) || role.vt != VT_I4 ||
      role.lVal != ROLE_SYSTEM_STATICTEXT) {
    return {};
  }
  BSTR name = nullptr;
  if (element.get_accName(Child(number), &name) != S_OK || name == nullptr) return {};
  const std::u16string text = swr::FromWide(name);
  SysFreeString(name);
  return text;
}

std::u16string FirstText(IAccessible& element) {
  if (std::u16string own = TextOf(element, CHILDID_SELF); !own.empty()) return own;
  LONG count = 0;
  if (FAILED(element.get_accChildCount(&count)) || count == 0) return {};
  std::vector<VARIANT> children(static_cast<size_t>(count));
  LONG got = 0;
  if (FAILED(AccessibleChildren(&element, 0, count, children.data(), &got))) return {};
  std::u16string text;
  for (LONG i = 0; i < got; ++i) {
    VARIANT& child = children[static_cast<size_t>(i)];
    if (text.empty() && child.vt == VT_I4) {
      text = TextOf(element, child.lVal);
    } else if (text.empty() && child.vt == VT_DISPATCH) {
      IAccessible* found = nullptr;
      if (SUCCEEDED(
              child.pdispVal->QueryInterface(IID_IAccessible, reinterpret_cast<void**>(&found)))) {
        const ComPointer<IAccessible> inner(found);
        text = FirstText(*found);
      }
    }
    VariantClear(&child);
  }
  return text;
}

}  // namespace

std::u16string FirstAccessibleText(HWND window) {
  const HRESULT started = CoInitialize(nullptr);
  std::u16string text;
  {
    IAccessible* found = nullptr;
    if (SUCCEEDED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                             IID_IAccessible, reinterpret_cast<void**>(&found)))) {
      const ComPointer<IAccessible> root(found);
      text = FirstText(*found);
    }
  }
  if (SUCCEEDED(started)) CoUninitialize();
  return text;
}

}  // namespace app::testing
