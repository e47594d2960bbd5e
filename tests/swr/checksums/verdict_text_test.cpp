#include "swr/checksums/verdict_text.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using swr::AlgoId;
using swr::CompareOutcome;

constexpr std::array three = {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3};

TEST(VerdictTextTest, NamesOfAlgorithmsAreJoinedAsInASentence) {
  EXPECT_EQ(swr::JoinAlgoNames({}, u"or"), u"");
  EXPECT_EQ(swr::JoinAlgoNames(std::span(three).first(1), u"or"), u"SHA-256");
  EXPECT_EQ(swr::JoinAlgoNames(std::span(three).first(2), u"or"), u"SHA-256 or SHA3-256");
  EXPECT_EQ(swr::JoinAlgoNames(three, u"and"), u"SHA-256, SHA3-256 and BLAKE3");
}

TEST(VerdictTextTest, DescribesAComparisonWithAnExpectedHash) {
  EXPECT_EQ(swr::MatchText(u"setup.exe", AlgoId::Sha256),
            u"Match. The SHA-256 of setup.exe is the expected hash.");
  EXPECT_EQ(swr::MatchesText(2, AlgoId::Md5), u"Match. 2 files have this MD5 hash.");
  EXPECT_EQ(swr::NoMatchAmongText(3), u"No match. None of the 3 files has this hash.");
  EXPECT_EQ(swr::NoMatchText(u"a", three),
            u"No match. a has a different SHA-256, SHA3-256 and BLAKE3.");
  EXPECT_EQ(swr::CannotCompareText(u"a"), u"a can't be read, so it can't be compared.");
}

TEST(VerdictTextTest, AsksForAFileToCompare) {
  const swr::ParsedHash named = {.candidates = {AlgoId::Md5}, .explicitAlgo = true};
  EXPECT_EQ(swr::FileWantedText(named), u"Add the file to compare with this MD5 hash.");
  const swr::ParsedHash bare = {.candidates = {three.begin(), three.end()}};
  EXPECT_EQ(swr::FileWantedText(bare),
            u"Add the file to compare with this hash (SHA-256, SHA3-256 or BLAKE3).");
}

TEST(VerdictTextTest, NamesAreEscapedForDisplay) {
  EXPECT_EQ(swr::CannotCompareText(u"a\u202Ebin.exe"),
            u"a[U+202E]bin.exe can't be read, so it can't be compared.");
}

TEST(VerdictTextTest, TheSummaryOmitsZeroCounts) {
  swr::VerificationCounts counts;
  counts.Of(CompareOutcome::Match) = 1;
  EXPECT_TRUE(swr::IsAllOk(counts));
  EXPECT_EQ(swr::VerificationText(counts), u"The file is OK.");
  counts.Of(CompareOutcome::Match) = 12;
  EXPECT_EQ(swr::VerificationText(counts), u"All 12 files are OK.");
  counts.Of(CompareOutcome::Missing) = 2;
  EXPECT_FALSE(swr::IsAllOk(counts));
  EXPECT_EQ(swr::VerificationText(counts), u"Not all files match: 12 OK, 2 missing.");
  counts = {};
  counts.Of(CompareOutcome::Mismatch) = 1;
  counts.Of(CompareOutcome::Unreadable) = 3;
  counts.Of(CompareOutcome::Pending) = 4;
  counts.Of(CompareOutcome::NotChecked) = 5;
  EXPECT_EQ(swr::VerificationText(counts),
            u"Not all files match: 0 OK, 1 FAILED, 3 unreadable, 9 not checked.");
}

TEST(VerdictTextTest, CountsSkippedLines) {
  EXPECT_EQ(swr::SkippedLinesText(1, 4),
            u"1 line of the checksum file aren't checksums and were skipped (first: line 4)");
  EXPECT_EQ(swr::SkippedLinesText(3, 1),
            u"3 lines of the checksum file aren't checksums and were skipped (first: line 1)");
}

}  // namespace
