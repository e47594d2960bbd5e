// The one sentence that says the verdict: what the value in the Expected hash box means for the
// list, or, with an empty box, how a verification stands.
#pragma once

#include <string>

#include "app/window/list_tally.h"
#include "app/window/view.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

struct ResultLine {
  std::u16string text;
  ResultKind kind = ResultKind::None;

  bool operator==(const ResultLine&) const = default;
};

// The sentence for a list that is not empty.
ResultLine BoxLine(const BoxVerdict& verdict, const RowList& rows, const swr::ParsedHash& expected);
// The sentence for an empty list.
ResultLine FileWantedLine(const swr::ParsedHash& expected);
// The sentence for a text that is no hash.
ResultLine NotAHashLine();

// The summary of a verification: all rows that a checksum file expects something of. Nothing when
// there are none. `isHashing` says whether the worker has anything to do.
ResultLine VerificationLine(const VerificationCounts& counts, bool isHashing);

}  // namespace app
