// What holds for every value that was read as a hash, wherever it came from.
#pragma once

#include <algorithm>

#include "fuzz/require.h"
#include "swr/checksums/pasted_hash.h"

namespace fuzz {

inline void RequireSound(const swr::ParsedHash& hash) {
  Require(!hash.candidates.empty(), "a hash belongs to an algorithm");
  for (const swr::AlgoId id : hash.candidates) {
    Require(std::ranges::count(hash.candidates, id) == 1, "an algorithm is compared once");
    Require(hash.digest.size() == swr::GetAlgo(id).digestSize,
            "a digest has its algorithm's length");
  }
  Require(!hash.explicitAlgo || hash.candidates.size() == 1, "a named algorithm is the only one");
  Require(hash.name.find(u'\n') == hash.name.npos, "a name stands on one line");
}

}  // namespace fuzz
