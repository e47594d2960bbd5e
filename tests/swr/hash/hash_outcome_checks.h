// Checks of the digests in a HashOutcome.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <string_view>

#include "swr/hash/digest_text.h"
#include "swr/hash/hash_file.h"
#include "swr/hash/hasher.h"

namespace swr::testing {

inline void ExpectNoDigests(const HashOutcome& outcome) {
  for (const AlgoInfo& info : AllAlgos()) {
    EXPECT_FALSE(outcome.digests[IndexOf(info.id)].present) << info.tag;
  }
}

// A clean outcome with the digests of `content` for the members of `mask` and no other.
inline void ExpectDigestsOf(const HashOutcome& outcome, AlgoMask mask, std::string_view content) {
  EXPECT_EQ(outcome.error, 0u);
  EXPECT_FALSE(outcome.cancelled);
  for (const AlgoInfo& info : AllAlgos()) {
    const DigestSlot& slot = outcome.digests[IndexOf(info.id)];
    const bool isMember = (mask & MaskOf(info.id)) != 0;
    EXPECT_EQ(slot.present, isMember) << info.tag;
    if (!isMember || !slot.present) continue;
    const Digest expected =
        HashBytes(info.id, {reinterpret_cast<const uint8_t*>(content.data()), content.size()});
    EXPECT_EQ(DigestToHex(slot, false), DigestToHex(expected, false)) << info.tag;
  }
}

}  // namespace swr::testing
