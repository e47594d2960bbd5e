#include "app/rows/row_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "swr/text/text.h"

namespace app {
namespace {

using Ids = std::vector<uint64_t>;
using Indexes = std::vector<size_t>;

Row RowOf(const std::u16string& path, uint64_t size = 1) {
  Row row;
  row.path = path;
  row.size = size;
  return row;
}

Ids IdsOf(const RowTable& rows) {
  Ids ids;
  for (const Row& row : rows) ids.push_back(row.id);
  return ids;
}

TEST(RowTableTest, GivesAscendingIdsAndNeverReusesThem) {
  RowTable rows;
  EXPECT_EQ(rows.Append(RowOf(u"a")).id, 1u);
  rows.SkipId();
  EXPECT_EQ(rows.Append(RowOf(u"b")).id, 3u);
  rows.Remove(Ids{3});
  EXPECT_EQ(rows.Append(RowOf(u"c")).id, 4u);
  rows.Clear();
  EXPECT_EQ(rows.Append(RowOf(u"d")).id, 5u);
  EXPECT_EQ(IdsOf(rows), Ids{5});
}

TEST(RowTableTest, PathsAreUniqueWhileEveryRowButTheFirstHadANewPath) {
  RowTable rows;
  EXPECT_TRUE(rows.PathsAreUnique());
  rows.Append(RowOf(u"a"));
  rows.Append(RowOf(u"b"), true);
  EXPECT_TRUE(rows.PathsAreUnique());
  rows.Append(RowOf(u"c"));
  rows.Append(RowOf(u"d"), true);
  EXPECT_FALSE(rows.PathsAreUnique());
  rows.Clear();
  rows.Append(RowOf(u"a"));
  EXPECT_TRUE(rows.PathsAreUnique());
}

TEST(RowTableTest, FindsByIdAndPath) {
  RowTable rows;
  for (const char16_t* path : {u"C:\\A", u"b", u"c:\\a", u"B", u"c"}) rows.Append(RowOf(path));
  EXPECT_EQ(rows.IndexOf(4), 3u);
  EXPECT_EQ(rows.Find(4), &rows[3]);
  EXPECT_EQ(rows.IndexOf(0), std::nullopt);
  EXPECT_EQ(rows.Find(6), nullptr);
  EXPECT_EQ(rows.IndexesOfPath(u"C:\\a"), (Indexes{0, 2}));
  EXPECT_EQ(rows.IndexesOfPath(u"b"), (Indexes{1, 3}));
  EXPECT_EQ(rows.IndexesOfPath(u""), Indexes{});

  rows.Reorder(Indexes{4, 3, 2, 1, 0});
  EXPECT_EQ(IdsOf(rows), (Ids{5, 4, 3, 2, 1}));
  EXPECT_EQ(rows.IndexOf(5), 0u);
  EXPECT_EQ(rows.IndexesOfPath(u"b"), (Indexes{1, 3}));
}

TEST(RowTableTest, RemovesEachIdOnceAndIgnoresUnknownIds) {
  RowTable rows;
  for (const char16_t* path : {u"a", u"b", u"a", u"c"}) rows.Append(RowOf(path));
  rows.Remove(Ids{1, 99, 1, 4, 0});
  EXPECT_EQ(IdsOf(rows), (Ids{2, 3}));
  EXPECT_EQ(rows.Find(1), nullptr);
  EXPECT_EQ(rows.IndexesOfPath(u"a"), Indexes{1});
  rows.Remove(Ids{1});
  rows.Remove(Ids{});
  EXPECT_EQ(rows.Size(), 2u);
  rows.Remove(Ids{2, 3});
  EXPECT_TRUE(rows.IsEmpty());
  EXPECT_EQ(rows.IndexesOfPath(u"a"), Indexes{});
}

TEST(RowTableTest, ReferencesStayValidUntilTheRowIsRemoved) {
  RowTable rows;
  const Row& first = rows.Append(RowOf(u"first"));
  for (int i = 0; i < 1000; ++i) rows.Append(RowOf(u"x"));
  rows.Remove(Ids{2, 3, 4});
  EXPECT_EQ(first.Path(), u"first");
  EXPECT_EQ(rows.Find(1), &first);
}

TEST(RowTableTest, UpdateOfARemovedRowDoesNothing) {
  RowTable rows;
  rows.Append(RowOf(u"a"));
  bool called = false;
  rows.Update(2, [&](RowState&) { called = true; });
  EXPECT_FALSE(called);
  rows.Update(1, [&](RowState& row) { row.size = 7; });
  EXPECT_EQ(rows[0].size, 7u);
  EXPECT_EQ(rows.Counters().TotalSize(), 7u);
}

// Compares the counters with a count from scratch.
void ExpectCountersOf(const RowTable& rows) {
  uint64_t size = 0;
  size_t matches = 0;
  std::optional<size_t> firstMatch;
  bool isPending = false;
  bool isLacking = false;
  std::optional<size_t> named;
  swr::VerificationCounts verification;
  const auto& expected = rows.Expected();
  for (size_t i = 0; i < rows.Size(); ++i) {
    const Row& row = rows[i];
    ASSERT_EQ(rows.IndexOf(row.id), i);
    size += row.size;
    if (row.hasExpected) ++verification.Of(CompareWithOwn(row).outcome);
    if (!expected) continue;
    const CompareOutcome outcome = CompareRow(row, expected->digest, expected->candidates).outcome;
    if (outcome == CompareOutcome::Match && matches++ == 0) firstMatch = i;
    isPending = isPending || outcome == CompareOutcome::Pending;
    const swr::AlgoMask known = row.digests.PresentMask() | row.pendingMask;
    isLacking = isLacking || (row.status != RowStatus::Failed && !row.cancelledByUser &&
                              (swr::CandidateMask(expected->candidates) & ~known) != 0);
    if (swr::EqualsNoCase(row.Name(), expected->name)) named = i;
  }
  const RowCounters& counters = rows.Counters();
  EXPECT_EQ(counters.TotalSize(), size);
  EXPECT_EQ(counters.Matches(), matches);
  if (firstMatch) {
    EXPECT_EQ(counters.FirstMatch(), *firstMatch);
  }
  EXPECT_EQ(counters.HasPending(), isPending);
  EXPECT_EQ(counters.LacksCandidates(), isLacking);
  EXPECT_EQ(counters.Named(), named);
  EXPECT_EQ(counters.Verification().rows, verification.rows);
}

void PutDigest(RowState& row, swr::AlgoId id, uint8_t fill) {
  swr::DigestSlot slot;
  slot.present = true;
  slot.length = static_cast<uint8_t>(swr::GetAlgo(id).digestSize);
  std::fill_n(slot.bytes.begin(), slot.length, fill);
  row.digests.Set(swr::IndexOf(id), slot);
}

TEST(RowTableTest, LookupsAndCountersAreCorrectAfterRandomChanges) {
  constexpr swr::AlgoId algos[] = {swr::AlgoId::Md5, swr::AlgoId::Xxh128};
  for (uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto pick = [&](size_t count) { return static_cast<size_t>(random() % count); };
    RowTable rows;
    Ids gone;
    for (int step = 0; step < 80; ++step) {
      switch (pick(rows.IsEmpty() ? 2 : 8)) {
        case 0:
        case 1: {
          Row row = RowOf(std::u16string(1, static_cast<char16_t>(u'a' + pick(4))), pick(9));
          if (pick(2) == 0) {
            row.hasExpected = true;
            row.extras.Make().expectedBytes =
                std::vector<uint8_t>(16, static_cast<uint8_t>(1 + pick(2)));
            row.extras.Make().expectedAlgos = {algos[pick(2)]};
          }
          rows.Append(std::move(row));
          break;
        }
        case 2: {
          Ids removed;
          for (const Row& row : rows) {
            if (pick(4) == 0) removed.push_back(row.id);
          }
          rows.Remove(removed);
          gone.insert(gone.end(), removed.begin(), removed.end());
          break;
        }
        case 3: {
          Indexes order(rows.Size());
          std::iota(order.begin(), order.end(), size_t{0});
          std::ranges::shuffle(order, random);
          rows.Reorder(order);
          break;
        }
        case 4:
          if (pick(3) == 0) {
            rows.CompareWith(std::nullopt);
          } else {
            rows.CompareWith(swr::ParsedHash{
                .digest = std::vector<uint8_t>(16, static_cast<uint8_t>(1 + pick(2))),
                .candidates = {algos[0], algos[1]},
                .name = std::u16string(1, static_cast<char16_t>(u'A' + pick(4)))});
          }
          break;
        default:
          rows.UpdateAt(pick(rows.Size()), [&](RowState& row) {
            row.status = static_cast<RowStatus>(pick(5));
            row.error = row.status == RowStatus::Failed ? 2 : 0;
            row.cancelledByUser = pick(3) == 0;
            row.pendingMask = pick(2) == 0 ? 0 : swr::MaskOf(algos[pick(2)]);
            row.size = pick(9);
            if (pick(2) == 0) PutDigest(row, algos[pick(2)], static_cast<uint8_t>(1 + pick(2)));
          });
      }
      ExpectCountersOf(rows);
      for (const char16_t* path : {u"a", u"B", u"c"}) {
        Indexes found;
        for (size_t i = 0; i < rows.Size(); ++i) {
          if (swr::EqualsNoCase(rows[i].Path(), path)) found.push_back(i);
        }
        EXPECT_EQ(rows.IndexesOfPath(path), found);
      }
      for (const uint64_t id : gone) EXPECT_EQ(rows.Find(id), nullptr);
    }
  }
}

}  // namespace
}  // namespace app
