#include "tests/ui/link_control_win.h"

#include <commctrl.h>

#include <stdexcept>

#include "swr/system/wide_text_win.h"
#include "tests/support/remote_list_win.h"

namespace app::testing {

using swr::testing::AskWindow;
using swr::testing::RemoteMemory;

void ClickLink(HWND control, const std::u16string& idOrAddress) {
  RECT client;
  GetClientRect(control, &client);
  const RemoteMemory memory(control, sizeof(LHITTESTINFO));
  for (LONG y = 4; y < client.bottom; y += 8) {
    for (LONG x = 0; x < client.right; x += 3) {
      LHITTESTINFO hit = {};
      hit.pt = {x, y};
      hit.item.mask = LIF_ITEMID | LIF_URL;
      memory.Write(0, &hit, sizeof hit);
      if (!AskWindow(control, LM_HITTEST, 0, reinterpret_cast<LPARAM>(memory.At(0)))) continue;
      memory.Read(0, &hit, sizeof hit);
      if (swr::FromWide(hit.item.szID) != idOrAddress &&
          swr::FromWide(hit.item.szUrl) != idOrAddress) {
        continue;
      }
      const LPARAM point = MAKELPARAM(x, y);
      PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, point);
      PostMessageW(control, WM_LBUTTONUP, 0, point);
      return;
    }
  }
  throw std::runtime_error("there is no such link");
}

}  // namespace app::testing
