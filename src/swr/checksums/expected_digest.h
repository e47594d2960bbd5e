// Compares the digests of a file with an expected one. Pure functions: nothing is read or shown
// here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "swr/hash/algorithms.h"
#include "swr/hash/digest.h"
#include "swr/hash/packed_digests.h"

namespace swr {

enum class CompareOutcome : uint8_t {
  NotChecked = 0,  // cancelled before every candidate was known
  Pending = 1,     // some candidate's digest is not known yet
  Match = 2,
  Mismatch = 3,
  Missing = 4,     // the file does not exist
  Unreadable = 5,  // the file exists, but could not be read
};
inline constexpr size_t CompareOutcomeCount = 6;

struct CompareResult {
  CompareOutcome outcome = CompareOutcome::NotChecked;
  AlgoId algo = {};  // the algorithm that matched; meaningful for Match only
};

// Compares the digests known so far with the expected one: Match, Mismatch or Pending. The first
// candidate whose digest is known and equal decides, even if others are still unknown. Without
// candidates the result is Mismatch.
CompareResult CompareDigests(const DigestSlots& digests, std::span<const uint8_t> expectedBytes,
                             std::span<const AlgoId> candidates);
CompareResult CompareDigests(const PackedDigests& digests, std::span<const uint8_t> expectedBytes,
                             std::span<const AlgoId> candidates);

// The outcome for a file that could not be read: Missing or Unreadable. `error` is a Windows error
// code other than 0.
CompareOutcome OutcomeOfError(uint32_t error);

// The number of listed files with each outcome.
struct VerificationCounts {
  std::array<size_t, CompareOutcomeCount> rows = {};  // by CompareOutcome

  size_t& Of(CompareOutcome outcome) { return rows[static_cast<size_t>(outcome)]; }
  size_t Of(CompareOutcome outcome) const { return rows[static_cast<size_t>(outcome)]; }
  size_t Total() const;
};

}  // namespace swr
