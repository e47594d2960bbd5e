#include "swr/checksums/expected_digest.h"

#include <gtest/gtest.h>

#include <vector>

#include "swr/system/error_codes.h"

namespace {

using swr::AlgoId;
using swr::CompareOutcome;

swr::DigestSlots Slots(std::vector<std::pair<AlgoId, std::vector<uint8_t>>> digests) {
  swr::DigestSlots slots;
  for (const auto& [algo, bytes] : digests) {
    swr::DigestSlot& slot = slots.Make(swr::IndexOf(algo));
    std::copy(bytes.begin(), bytes.end(), slot.bytes.begin());
    slot.length = static_cast<uint8_t>(bytes.size());
    slot.present = true;
  }
  return slots;
}

const std::vector<uint8_t> a(16, 0xAA);
const std::vector<uint8_t> b(16, 0xBB);

TEST(ExpectedDigestTest, TheFirstKnownAndEqualCandidateDecides) {
  struct Case {
    const char* what;
    std::vector<std::pair<AlgoId, std::vector<uint8_t>>> known;
    std::vector<AlgoId> candidates;
    CompareOutcome outcome;
    AlgoId algo = {};
  };
  const std::vector<Case> cases = {
      {"no candidate", {{AlgoId::Md5, a}}, {}, CompareOutcome::Mismatch},
      {"nothing known", {}, {AlgoId::Md5}, CompareOutcome::Pending},
      {"equal", {{AlgoId::Md5, a}}, {AlgoId::Md5}, CompareOutcome::Match, AlgoId::Md5},
      {"different", {{AlgoId::Md5, b}}, {AlgoId::Md5}, CompareOutcome::Mismatch},
      {"the second equal, the first unknown",
       {{AlgoId::Xxh128, a}},
       {AlgoId::Md5, AlgoId::Xxh128},
       CompareOutcome::Match,
       AlgoId::Xxh128},
      {"the first different, the second unknown",
       {{AlgoId::Md5, b}},
       {AlgoId::Md5, AlgoId::Xxh128},
       CompareOutcome::Pending},
      {"both equal: the first in the order of candidates",
       {{AlgoId::Md4, a}, {AlgoId::Md5, a}},
       {AlgoId::Md5, AlgoId::Md4},
       CompareOutcome::Match,
       AlgoId::Md5},
      {"the same bytes, but not all of them",
       {{AlgoId::Md5, std::vector<uint8_t>(8, 0xAA)}},
       {AlgoId::Md5},
       CompareOutcome::Mismatch},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const swr::CompareResult result = swr::CompareDigests(Slots(c.known), a, c.candidates);
    EXPECT_EQ(result.outcome, c.outcome);
    if (c.outcome == CompareOutcome::Match) {
      EXPECT_EQ(result.algo, c.algo);
    }
  }
}

TEST(ExpectedDigestTest, AnErrorIsAMissingFileOrAnUnreadableOne) {
  EXPECT_EQ(swr::OutcomeOfError(swr::ErrorFileNotFound), CompareOutcome::Missing);
  EXPECT_EQ(swr::OutcomeOfError(swr::ErrorPathNotFound), CompareOutcome::Missing);
  EXPECT_EQ(swr::OutcomeOfError(swr::ErrorAccessDenied), CompareOutcome::Unreadable);
}

}  // namespace
