// What holds for every value that was read as a hash, wherever it came from.
#pragma once

#include <algorithm>

#include "fuzz/demand.h"
#include "swr/checksums/pasted_hash.h"

namespace fuzz {

inline void DemandSound(const swr::ParsedHash& hash) {
  Demand(!hash.candidates.empty(), "a hash belongs to an algorithm");
  for (const swr::AlgoId id : hash.candidates) {
    Demand(std::ranges::count(hash.candidates, id) == 1, "an algorithm is compared once");
    Demand(hash.digest.size() == swr::GetAlgo(id).digestSize,
           "a digest has its algorithm's length");
  }
  Demand(!hash.explicitAlgo || hash.candidates.size() == 1, "a named algorithm is the only one");
  Demand(hash.name.find(u'\n') == hash.name.npos, "a name stands on one line");
}

}  // namespace fuzz
