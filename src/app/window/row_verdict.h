// Judges a row: its digests against an expected one, and the words of its Status column. Nothing is
// stored; both are worked out anew each time.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/window/list_row.h"

namespace app {

enum class CompareOutcome : uint8_t {
  NotChecked = 0,  // cancelled before every candidate was known
  Pending = 1,
  Match = 2,
  Mismatch = 3,
  Missing = 4,
  Unreadable = 5,
};

struct CompareResult {
  CompareOutcome outcome = CompareOutcome::NotChecked;
  swr::AlgoId algo = {};  // the algorithm that matched; meaningful for Match only
};

// A digest to compare with, and the algorithms that it may belong to, in the order of comparison.
struct ExpectedDigest {
  std::vector<uint8_t> bytes;
  std::vector<swr::AlgoId> candidates;
};

// The first candidate whose digest is known and equal decides, even if others are still unknown.
CompareResult CompareRow(const ListRow& row, std::span<const uint8_t> expectedBytes,
                         std::span<const swr::AlgoId> candidates);

// The text of the Status column. `box` is the value in the Expected hash box, or null; the row's
// own expected digest takes precedence over it.
std::u16string RowStatusText(const ListRow& row, const ExpectedDigest* box);

}  // namespace app
