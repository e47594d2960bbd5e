// The menu of all algorithms behind the More button.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

// The command of an algorithm's item is this number plus its AlgoId.
inline constexpr uint32_t AlgoMenuFirstCommand = 41000;

struct AlgoMenuItem {
  swr::AlgoId algo;
  std::u16string text;
  bool checked = false;
  bool separatorBefore = false;
};

// In catalogue order, with a separator wherever the group changes. The texts say which algorithms
// are no protection against a forger.
std::vector<AlgoMenuItem> BuildAlgoMenu(swr::AlgoMask mask, bool withLegacy);

}  // namespace app
