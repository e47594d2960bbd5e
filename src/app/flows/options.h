// What the user has chosen and keeps from one run to the next.
#pragma once

#include "swr/hash/algorithms.h"

namespace app {

struct Options {
  swr::AlgoMask algorithms = swr::DefaultAlgoMask;  // never empty
  bool uppercase = false;                           // hexadecimal digits
  bool showLegacy = false;                          // MD2 and MD4 are on offer
  bool includeHidden = false;                       // folders are walked with hidden files
  bool crLf = false;                                // line ends of saved files
};

}  // namespace app
