#include "app/verdicts/row_verdict.h"

#include <gtest/gtest.h>

#include <string>

#include "app/rows/row_comparison.h"
#include "swr/system/error_codes.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"

namespace app {
namespace {

using swr::AlgoId;

constexpr uint8_t GoodByte = 0xAA;

// A row with digests of GoodByte for `present`.
Row MakeRow(RowStatus status, std::initializer_list<AlgoId> present) {
  Row row;
  row.status = status;
  for (const AlgoId id : present) {
    swr::DigestSlot slot;
    slot.present = true;
    slot.length = static_cast<uint8_t>(swr::GetAlgo(id).digestSize);
    std::fill_n(slot.bytes.begin(), slot.length, GoodByte);
    row.digests.Set(swr::IndexOf(id), slot);
  }
  return row;
}

std::vector<uint8_t> Bytes(size_t length, uint8_t value = GoodByte) {
  return std::vector<uint8_t>(length, value);
}

struct CompareCase {
  const char* description;
  RowStatus status = RowStatus::Done;
  uint32_t error = 0;
  std::vector<AlgoId> present;
  std::vector<uint8_t> expected;
  std::vector<AlgoId> candidates;
  CompareOutcome outcome;
  AlgoId algo = AlgoId::Crc32;
};

TEST(CompareRowTest, Table) {
  const std::vector<AlgoId> of32 = {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3};
  const CompareCase cases[] = {
      // A failed row.
      {.description = "missing file",
       .status = RowStatus::Failed,
       .error = 2,
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Missing},
      {.description = "missing folder",
       .status = RowStatus::Failed,
       .error = 3,
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Missing},
      {.description = "denied",
       .status = RowStatus::Failed,
       .error = 5,
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Unreadable},
      {.description = "missing takes precedence over an empty list of candidates",
       .status = RowStatus::Failed,
       .error = 2,
       .outcome = CompareOutcome::Missing},
      // Candidates.
      {.description = "no candidates", .expected = Bytes(32), .outcome = CompareOutcome::Mismatch},
      {.description = "first candidate equals",
       .present = {AlgoId::Sha256},
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Match,
       .algo = AlgoId::Sha256},
      {.description = "second equals although the third is unknown",
       .present = {AlgoId::Sha3_256},
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Match,
       .algo = AlgoId::Sha3_256},
      {.description = "first differs, others unknown",
       .present = {AlgoId::Sha256},
       .expected = Bytes(32, 0xBB),
       .candidates = of32,
       .outcome = CompareOutcome::Pending},
      {.description = "first differs, others unknown, in a cancelled row",
       .status = RowStatus::Cancelled,
       .present = {AlgoId::Sha256},
       .expected = Bytes(32, 0xBB),
       .candidates = of32,
       .outcome = CompareOutcome::NotChecked},
      {.description = "a cancelled row still matches with a digest that it has",
       .status = RowStatus::Cancelled,
       .present = {AlgoId::Sha256},
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Match,
       .algo = AlgoId::Sha256},
      {.description = "all known, none equals",
       .present = {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3},
       .expected = Bytes(32, 0xBB),
       .candidates = of32,
       .outcome = CompareOutcome::Mismatch},
      {.description = "waiting row with nothing known",
       .status = RowStatus::Waiting,
       .expected = Bytes(32),
       .candidates = of32,
       .outcome = CompareOutcome::Pending},
      // Lengths.
      {.description = "equal bytes of another length",
       .present = {AlgoId::Md5},
       .expected = Bytes(20),
       .candidates = {AlgoId::Md5},
       .outcome = CompareOutcome::Mismatch},
  };
  for (const CompareCase& test : cases) {
    SCOPED_TRACE(test.description);
    Row row = MakeRow(test.status, {});
    row.error = test.error;
    for (const AlgoId id : test.present) {
      row.digests.Set(swr::IndexOf(id), MakeRow(test.status, {id}).digests[swr::IndexOf(id)]);
    }
    const CompareResult result = CompareRow(row, test.expected, test.candidates);
    EXPECT_EQ(result.outcome, test.outcome);
    if (test.outcome == CompareOutcome::Match) {
      EXPECT_EQ(result.algo, test.algo);
    }
  }
}

struct StatusCase {
  const char* description;
  RowStatus status = RowStatus::Done;
  uint32_t error = 0;
  bool changed = false;
  std::optional<uint8_t> expected;  // the row's own SHA-256, as one byte repeated
  std::optional<uint8_t> box;       // the Expected hash box, likewise
  bool hasDigest = true;            // SHA-256 of GoodByte
  std::u16string text;
};

TEST(RowStatusTextTest, Table) {
  const StatusCase cases[] = {
      {.description = "waiting", .status = RowStatus::Waiting, .text = u"Waiting"},
      {.description = "hashing", .status = RowStatus::Hashing, .text = u"Hashing"},
      {.description = "cancelled", .status = RowStatus::Cancelled, .text = u"Cancelled"},
      {.description = "waiting hides a match",
       .status = RowStatus::Waiting,
       .expected = GoodByte,
       .text = u"Waiting"},
      {.description = "missing file", .status = RowStatus::Failed, .error = 2, .text = u"Missing"},
      {.description = "missing folder",
       .status = RowStatus::Failed,
       .error = 3,
       .text = u"Missing"},
      {.description = "missing, with an expected digest",
       .status = RowStatus::Failed,
       .error = 2,
       .expected = GoodByte,
       .text = u"Missing"},
      {.description = "another error, with the system's text",
       .status = RowStatus::Failed,
       .error = swr::ErrorAccessDenied,
       .text = swr::FormatErrorText(swr::ErrorAccessDenied)},
      {.description = "an error without a text",
       .status = RowStatus::Failed,
       .error = 3735928559,
       .text = u"Error 3735928559"},
      {.description = "done", .text = u"Done"},
      {.description = "changed",
       .changed = true,
       .text = u"Done, but the file changed while it was read"},
      {.description = "own digest matches", .expected = GoodByte, .text = u"OK (SHA-256)"},
      {.description = "own digest matches and hides the change",
       .changed = true,
       .expected = GoodByte,
       .text = u"OK (SHA-256)"},
      {.description = "own digest differs", .expected = 0xBB, .text = u"FAILED"},
      {.description = "own digest takes precedence over the box",
       .expected = 0xBB,
       .box = GoodByte,
       .text = u"FAILED"},
      {.description = "box matches", .box = GoodByte, .text = u"Match (SHA-256)"},
      {.description = "box differs", .box = 0xBB, .text = u"Done"},
      {.description = "box differs and the file changed",
       .changed = true,
       .box = 0xBB,
       .text = u"Done, but the file changed while it was read"},
      {.description = "own digest not known yet",
       .expected = GoodByte,
       .hasDigest = false,
       .text = u"Done"},
  };
  for (const StatusCase& test : cases) {
    SCOPED_TRACE(test.description);
    Row row = MakeRow(test.status, {});
    if (test.hasDigest) row = MakeRow(test.status, {AlgoId::Sha256});
    row.error = test.error;
    row.changed = test.changed;
    if (test.expected) {
      row.hasExpected = true;
      row.extras.Make().expectedBytes = Bytes(32, *test.expected);
      row.extras.Make().expectedAlgos = {AlgoId::Sha256};
    }
    std::optional<swr::ParsedHash> box;
    if (test.box) {
      box = swr::ParsedHash{.digest = Bytes(32, *test.box),
                            .candidates = {AlgoId::Sha256, AlgoId::Blake3}};
    }
    const std::u16string text = RowStatusText(row, box ? &*box : nullptr);
    EXPECT_EQ(text, test.text) << swr::WideToUtf8(text);
  }
}

struct TintCase {
  const char* description;
  RowStatus status = RowStatus::Done;
  uint32_t error = 0;
  std::optional<uint8_t> expected;  // the row's own SHA-256, as one byte repeated
  std::optional<uint8_t> box;       // the Expected hash box: SHA-256 or BLAKE3, likewise
  bool hasDigest = true;            // SHA-256 of GoodByte
  RowTint tint;
};

TEST(RowTintTest, Table) {
  const TintCase cases[] = {
      // Nothing is expected.
      {.description = "a plain row", .tint = RowTint::None},
      {.description = "a missing plain row",
       .status = RowStatus::Failed,
       .error = 2,
       .tint = RowTint::None},
      // Its own digest.
      {.description = "right", .expected = GoodByte, .tint = RowTint::Good},
      {.description = "wrong", .expected = 0xBB, .tint = RowTint::Bad},
      {.description = "right while more is hashed",
       .status = RowStatus::Hashing,
       .expected = GoodByte,
       .tint = RowTint::Good},
      {.description = "wrong while more waits",
       .status = RowStatus::Waiting,
       .expected = 0xBB,
       .tint = RowTint::Bad},
      {.description = "right although cancelled",
       .status = RowStatus::Cancelled,
       .expected = GoodByte,
       .tint = RowTint::Good},
      {.description = "wrong although cancelled",
       .status = RowStatus::Cancelled,
       .expected = 0xBB,
       .tint = RowTint::Bad},
      {.description = "not known yet",
       .status = RowStatus::Waiting,
       .expected = GoodByte,
       .hasDigest = false,
       .tint = RowTint::None},
      {.description = "cancelled before it was known",
       .status = RowStatus::Cancelled,
       .expected = GoodByte,
       .hasDigest = false,
       .tint = RowTint::None},
      {.description = "missing",
       .status = RowStatus::Failed,
       .error = 2,
       .expected = GoodByte,
       .tint = RowTint::Bad},
      {.description = "missing with its folder",
       .status = RowStatus::Failed,
       .error = 3,
       .expected = GoodByte,
       .tint = RowTint::Bad},
      {.description = "unreadable",
       .status = RowStatus::Failed,
       .error = swr::ErrorAccessDenied,
       .expected = GoodByte,
       .tint = RowTint::Bad},
      // The box.
      {.description = "a match with the box", .box = GoodByte, .tint = RowTint::Good},
      {.description = "a mismatch with the box colours nothing",
       .box = 0xBB,
       .tint = RowTint::None},
      {.description = "a match with the box while more waits",
       .status = RowStatus::Waiting,
       .box = GoodByte,
       .tint = RowTint::Good},
      {.description = "a match with the box although cancelled",
       .status = RowStatus::Cancelled,
       .box = GoodByte,
       .tint = RowTint::Good},
      {.description = "a failed row matches nothing",
       .status = RowStatus::Failed,
       .error = 2,
       .box = GoodByte,
       .tint = RowTint::None},
      {.description = "nothing known for the box",
       .box = GoodByte,
       .hasDigest = false,
       .tint = RowTint::None},
      // Both.
      {.description = "wrong, whatever the box says",
       .expected = 0xBB,
       .box = GoodByte,
       .tint = RowTint::Bad},
      {.description = "right, whatever the box says",
       .expected = GoodByte,
       .box = 0xBB,
       .tint = RowTint::Good},
      {.description = "missing, whatever the box says",
       .status = RowStatus::Failed,
       .error = 2,
       .expected = GoodByte,
       .box = GoodByte,
       .tint = RowTint::Bad},
  };
  for (const TintCase& test : cases) {
    SCOPED_TRACE(test.description);
    Row row = MakeRow(test.status, {});
    if (test.hasDigest) row = MakeRow(test.status, {AlgoId::Sha256});
    row.error = test.error;
    if (test.expected) {
      row.hasExpected = true;
      row.extras.Make().expectedBytes = Bytes(32, *test.expected);
      row.extras.Make().expectedAlgos = {AlgoId::Sha256};
    }
    std::optional<swr::ParsedHash> box;
    if (test.box) {
      box = swr::ParsedHash{.digest = Bytes(32, *test.box),
                            .candidates = {AlgoId::Sha256, AlgoId::Blake3}};
    }
    EXPECT_EQ(RowTintOf(row, box ? &*box : nullptr), test.tint);
  }
}

// The box decides only while the row's own digests are still pending.
TEST(RowTintTest, TheBoxDecidesWhileTheOwnDigestIsUnknown) {
  Row row = MakeRow(RowStatus::Waiting, {AlgoId::Sha256});
  row.hasExpected = true;
  row.extras.Make().expectedBytes = Bytes(16);
  row.extras.Make().expectedAlgos = {AlgoId::Md5};
  const swr::ParsedHash box = {.digest = Bytes(32), .candidates = {AlgoId::Sha256}};
  EXPECT_EQ(RowTintOf(row, nullptr), RowTint::None);
  EXPECT_EQ(RowTintOf(row, &box), RowTint::Good);
  row.status = RowStatus::Cancelled;
  EXPECT_EQ(RowTintOf(row, &box), RowTint::None) << "not checked";
}

// A short digest with a named algorithm, and a row without candidates.
TEST(RowTintTest, AnImpossibleDigestIsWrong) {
  Row row = MakeRow(RowStatus::Done, {AlgoId::Xxh3_64});
  row.hasExpected = true;
  row.extras.Make().expectedBytes = Bytes(2);
  row.extras.Make().expectedAlgos = {AlgoId::Xxh3_64};
  EXPECT_EQ(RowTintOf(row, nullptr), RowTint::Bad);
  row.extras.Make().expectedAlgos.clear();
  EXPECT_EQ(RowTintOf(row, nullptr), RowTint::Bad);
}

}  // namespace
}  // namespace app
