// Requirements for every parsed hash, whatever its source.
#pragma once

#include <algorithm>

#include "fuzz/require.h"
#include "swr/checksums/pasted_hash.h"

namespace fuzz {

inline void RequireSound(const swr::ParsedHash& hash) {
  Require(!hash.candidates.empty(), "a hash has candidates");
  for (const swr::AlgoId id : hash.candidates) {
    Require(std::ranges::count(hash.candidates, id) == 1, "a candidate occurs once");
    Require(hash.digest.size() == swr::GetAlgo(id).digestSize,
            "a digest has the length of its algorithm");
  }
  Require(!hash.explicitAlgo || hash.candidates.size() == 1,
          "a named algorithm is the only candidate");
  Require(hash.name.find(u'\n') == hash.name.npos, "a name has no line feed");
}

}  // namespace fuzz
