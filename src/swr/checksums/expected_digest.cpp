#include "swr/checksums/expected_digest.h"

#include <numeric>

#include "swr/hash/digest_text.h"
#include "swr/system/error_codes.h"

namespace swr {

CompareResult CompareDigests(const DigestSlots& digests, std::span<const uint8_t> expectedBytes,
                             std::span<const AlgoId> candidates) {
  bool allKnown = true;
  for (const AlgoId id : candidates) {
    const DigestSlot& slot = digests[IndexOf(id)];
    if (!slot.present) {
      allKnown = false;
    } else if (DigestEquals(slot, expectedBytes)) {
      return {CompareOutcome::Match, id};
    }
  }
  return {allKnown ? CompareOutcome::Mismatch : CompareOutcome::Pending};
}

CompareOutcome OutcomeOfError(uint32_t error) {
  return IsMissingError(error) ? CompareOutcome::Missing : CompareOutcome::Unreadable;
}

size_t VerificationCounts::Total() const {
  return std::accumulate(rows.begin(), rows.end(), size_t{0});
}

}  // namespace swr
