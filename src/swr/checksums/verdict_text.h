// The sentences that state a verdict, as functions of plain values. Both front ends use them. Names
// are passed unescaped and are escaped for display here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "swr/checksums/expected_digest.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/hash/algorithms.h"

namespace swr {

// Display names in the order given: "A", "A or B", "A, B or C" with the word "or".
std::u16string JoinAlgoNames(std::span<const AlgoId> ids, std::u16string_view word);

// --- Files compared with an expected hash

// One file matched: "Match. The SHA-256 of setup.exe is the expected hash."
std::u16string MatchText(std::u16string_view fileName, AlgoId algo);
// Several files matched. `algo` is that of the first.
std::u16string MatchesText(size_t matches, AlgoId algo);
// None of several files matched.
std::u16string NoMatchAmongText(size_t files);
// The file in question has other digests for all candidates.
std::u16string NoMatchText(std::u16string_view fileName, std::span<const AlgoId> candidates);
// The file in question could not be read.
std::u16string CannotCompareText(std::u16string_view fileName);
// The text given as the expected hash is not a hash.
std::u16string NotAHashText();
// There is an expected hash but no file to compare.
std::u16string FileWantedText(const ParsedHash& expected);

// --- A verification

// The summary of a finished verification; `counts` is not empty. Pending files are counted as not
// checked.
std::u16string VerificationText(const VerificationCounts& counts);
// Whether every file is OK.
bool IsAllOk(const VerificationCounts& counts);
// The note about lines that have none of the forms, without a full stop. `firstLine` counts from 1.
std::u16string SkippedLinesText(size_t lines, uint32_t firstLine);

}  // namespace swr
