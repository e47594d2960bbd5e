// The sentence that states the verdict: what the value in the Expected hash box means for the list
// or, with an empty box, how a verification is going.
#pragma once

#include <cstdint>
#include <string>

#include "app/rows/row_table.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

// What kind of verdict the result line states, which decides how it is drawn.
enum class ResultKind : uint8_t {
  None = 0,  // nothing
  Good = 1,  // a match, all OK
  Bad = 2,   // no match, some not OK
  Hint = 3,  // not a hash, or no file to compare it with
  Busy = 4,  // still working
};

struct ResultLine {
  std::u16string text;
  ResultKind kind = ResultKind::None;

  bool operator==(const ResultLine&) const = default;
};

// The verdict on all rows. `expected` is the value that the table compares them with. The table
// must not be empty unless more rows may come.
ResultLine ExpectedHashLine(const RowTable& rows, const swr::ParsedHash& expected,
                            bool moreRowsMayCome = false);
// For an empty list.
ResultLine FileWantedLine(const swr::ParsedHash& expected);
// For a text that is not a hash.
ResultLine NotAHashLine();

// The summary of a verification: all rows with an expected digest from a checksum file. Empty when
// there are none. `isWorking`: whether rows may still get digests. `moreRowsMayCome`: whether more
// rows of a checksum file may come; the summary is not final until then.
ResultLine VerificationLine(const swr::VerificationCounts& counts, bool isWorking,
                            bool moreRowsMayCome = false);

}  // namespace app
