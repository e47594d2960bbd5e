// The algorithms that have a check box of their own in the main dialog.
#pragma once

#include <cstdint>

#include "resources/resource_ids.h"
#include "swr/hash/algorithms.h"

namespace app {

struct AlgoBox {
  uint32_t control;
  swr::AlgoId algo;
};

inline constexpr AlgoBox AlgoBoxes[] = {
    {IDC_ALGO_MD5, swr::AlgoId::Md5},       {IDC_ALGO_SHA1, swr::AlgoId::Sha1},
    {IDC_ALGO_SHA256, swr::AlgoId::Sha256}, {IDC_ALGO_SHA512, swr::AlgoId::Sha512},
    {IDC_ALGO_BLAKE3, swr::AlgoId::Blake3},
};

}  // namespace app
