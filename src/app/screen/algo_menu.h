// The menu of all algorithms, opened by the More button.
#pragma once

#include <string>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct AlgoMenuItem {
  swr::AlgoId algo;
  std::u16string text;
  bool checked = false;
  bool separatorBefore = false;
};

// In catalogue order, with a separator wherever the group changes. The texts mark the algorithms
// that give no protection against forgery.
std::vector<AlgoMenuItem> BuildAlgoMenu(swr::AlgoMask mask, bool withLegacy);

}  // namespace app
