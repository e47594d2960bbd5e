// The one sentence that says the verdict: what the value in the Expected hash box means for the
// list, or, with an empty box, how a verification stands.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "app/window/list_row.h"
#include "app/window/view.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

struct ResultLine {
  std::u16string text;
  ResultKind kind = ResultKind::None;

  bool operator==(const ResultLine&) const = default;
};

using RowList = std::vector<std::unique_ptr<ListRow>>;

// All rows against the value in the box.
struct BoxVerdict {
  size_t matches = 0;
  const ListRow* firstMatch = nullptr;
  swr::AlgoId matchAlgo = {};  // of the first match
  bool isPending = false;      // some row's digest is still to come
  // The last row of the name that came with the value; for no more than whom to blame.
  const ListRow* named = nullptr;
};
BoxVerdict JudgeRows(const RowList& rows, const swr::ParsedHash& expected);

// The sentence for a list that is not empty.
ResultLine BoxLine(const BoxVerdict& verdict, const RowList& rows, const swr::ParsedHash& expected);
// The sentence for an empty list.
ResultLine FileWantedLine(const swr::ParsedHash& expected);
// The sentence for a text that is no hash.
ResultLine NotAHashLine();

// The summary of a verification: all rows that a checksum file expects something of. Nothing when
// there are none. `isHashing` says whether the worker has anything to do.
ResultLine VerificationLine(const RowList& rows, bool isHashing);

}  // namespace app
