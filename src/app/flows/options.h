// The user's options, which are kept between runs.
#pragma once

#include "swr/hash/algorithms.h"

namespace app {

struct Options {
  swr::AlgoMask algorithms = swr::DefaultAlgoMask;  // never empty
  bool uppercase = false;                           // hexadecimal digits
  bool showLegacy = false;                          // MD2 and MD4 are offered
  bool includeHidden = false;                       // in folders, add hidden files too
  bool crLf = false;                                // line ends of saved files
};

}  // namespace app
