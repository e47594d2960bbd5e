#include "swr/checksums/expected_digest.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "swr/system/error_codes.h"

namespace swr {

namespace {

// digestOf(id): the bytes of the digest, or nothing if it is not known.
template <typename DigestOf>
CompareResult Compare(const DigestOf& digestOf, std::span<const uint8_t> expectedBytes,
                      std::span<const AlgoId> candidates) {
  bool allKnown = true;
  for (const AlgoId id : candidates) {
    const std::optional<std::span<const uint8_t>> digest = digestOf(id);
    if (!digest) {
      allKnown = false;
    } else if (std::ranges::equal(*digest, expectedBytes)) {
      return {CompareOutcome::Match, id};
    }
  }
  return {allKnown ? CompareOutcome::Mismatch : CompareOutcome::Pending};
}

using MaybeBytes = std::optional<std::span<const uint8_t>>;

}  // namespace

CompareResult CompareDigests(const DigestSlots& digests, std::span<const uint8_t> expectedBytes,
                             std::span<const AlgoId> candidates) {
  const auto digestOf = [&](AlgoId id) {
    const DigestSlot& slot = digests[IndexOf(id)];
    return slot.present ? MaybeBytes(slot.View()) : std::nullopt;
  };
  return Compare(digestOf, expectedBytes, candidates);
}

CompareResult CompareDigests(const PackedDigests& digests, std::span<const uint8_t> expectedBytes,
                             std::span<const AlgoId> candidates) {
  const auto digestOf = [&](AlgoId id) {
    const size_t index = IndexOf(id);
    return digests.Has(index) ? MaybeBytes(digests.View(index)) : std::nullopt;
  };
  return Compare(digestOf, expectedBytes, candidates);
}

CompareOutcome OutcomeOfError(uint32_t error) {
  return IsMissingError(error) ? CompareOutcome::Missing : CompareOutcome::Unreadable;
}

size_t VerificationCounts::Total() const {
  return std::accumulate(rows.begin(), rows.end(), size_t{0});
}

}  // namespace swr
