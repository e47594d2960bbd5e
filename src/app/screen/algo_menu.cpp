#include "app/screen/algo_menu.h"

namespace app {

std::vector<AlgoMenuItem> BuildAlgoMenu(swr::AlgoMask mask, bool withLegacy) {
  std::vector<AlgoMenuItem> items;
  const swr::AlgoInfo* previous = nullptr;
  for (const swr::AlgoInfo& info : swr::AllAlgos()) {
    if (info.group == swr::AlgoGroup::Legacy && !withLegacy) continue;
    std::u16string text(info.name);
    if (!info.secure) {
      text += info.group == swr::AlgoGroup::Fast ? u"\t(fast, not for security)"
                                                 : u"\t(not for security)";
    }
    items.push_back({.algo = info.id,
                     .text = std::move(text),
                     .checked = (mask & swr::MaskOf(info.id)) != 0,
                     .separatorBefore = previous != nullptr && previous->group != info.group});
    previous = &info;
  }
  return items;
}

}  // namespace app
