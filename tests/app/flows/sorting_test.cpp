#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using Texts = std::vector<std::u16string>;

// Columns of a window with the default algorithms.
constexpr size_t Name = 0;
constexpr size_t Size = 2;
constexpr size_t Md5 = 3;
constexpr size_t Status = 6;

Texts Names(const FakeWindow& window) {
  Texts names;
  for (const Row& row : window.rows) names.push_back(row.Name());
  return names;
}

TEST(SortingTest, ByNameInNaturalOrder) {
  FakeWindow window;
  for (const char16_t* name : {u"file 10", u"File 2", u"file 1", u"b", u"A"}) window.AddRow(name);
  window.sorting.SortBy(Name);
  EXPECT_EQ(Names(window), (Texts{u"A", u"b", u"file 1", u"File 2", u"file 10"}));
}

TEST(SortingTest, FurtherClicksReverseTheOrder) {
  FakeWindow window;
  for (const char16_t* name : {u"b", u"a", u"c"}) window.AddRow(name);
  window.sorting.SortBy(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b", u"c"}));
  EXPECT_EQ(window.view.sortMark, Name);
  EXPECT_FALSE(window.view.sortMarkDescending);
  window.sorting.SortBy(Name);
  EXPECT_EQ(Names(window), (Texts{u"c", u"b", u"a"}));
  EXPECT_TRUE(window.view.sortMarkDescending);
  window.sorting.SortBy(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b", u"c"}));
  EXPECT_FALSE(window.view.sortMarkDescending);
}

TEST(SortingTest, AfterAnotherColumnTheFirstClickSortsAscending) {
  FakeWindow window;
  window.AddRow(u"b", 1);
  window.AddRow(u"a", 2);
  window.sorting.SortBy(Name);
  window.sorting.SortBy(Size);
  EXPECT_EQ(Names(window), (Texts{u"b", u"a"}));
  EXPECT_EQ(window.view.sortMark, Size);
  window.sorting.SortBy(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b"}));
  EXPECT_FALSE(window.view.sortMarkDescending);
}

TEST(SortingTest, BySizeComparesNumbers) {
  FakeWindow window;
  window.AddRow(u"large", 2000);
  window.AddRow(u"failed", 1500).status = RowStatus::Failed;
  window.AddRow(u"small", 999);
  window.sorting.SortBy(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"failed", u"large"}));
}

TEST(SortingTest, EqualRowsKeepTheirOrderInBothDirections) {
  FakeWindow window;
  window.AddRow(u"b", 5);
  window.AddRow(u"small", 1);
  window.AddRow(u"a", 5);
  window.AddRow(u"large", 9);
  window.sorting.SortBy(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"b", u"a", u"large"}));
  window.sorting.SortBy(Size);
  EXPECT_EQ(Names(window), (Texts{u"large", u"b", u"a", u"small"}));
  // Rows that are equal in this sort keep the order of an earlier one.
  window.sorting.SortBy(Name);
  window.sorting.SortBy(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"a", u"b", u"large"}));
}

TEST(SortingTest, RowsWithoutADigestComeFirst) {
  FakeWindow window;
  Row& done = window.AddRow(u"done");
  swr::DigestSlot zeros;
  zeros.present = true;
  zeros.length = 16;
  done.digests.Set(swr::IndexOf(swr::AlgoId::Md5), zeros);
  window.AddRow(u"waiting");
  window.sorting.SortBy(Md5);
  EXPECT_EQ(Names(window), (Texts{u"waiting", u"done"}));
}

TEST(SortingTest, ByStatusComparesTexts) {
  FakeWindow window;
  window.AddRow(u"waiting");
  window.AddRow(u"done").status = RowStatus::Done;
  Row& missing = window.AddRow(u"missing");
  missing.status = RowStatus::Failed;
  missing.error = 2;
  window.sorting.SortBy(Status);
  EXPECT_EQ(Names(window), (Texts{u"done", u"missing", u"waiting"}));
}

TEST(SortingTest, TheSelectionIsLostAndTheDetailsAreUpdated) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.view.selected = {0};
  window.sorting.SortBy(Name);
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.view.details, u"2 files. Select one to see its details.");
}

TEST(SortingTest, RowsAreFoundByIdAfterwards) {
  FakeWindow window;
  const uint64_t b = window.AddRow(u"b").id;
  const uint64_t a = window.AddRow(u"a").id;
  window.sorting.SortBy(Name);
  EXPECT_EQ(window.rows.Find(a)->Name(), u"a");
  EXPECT_EQ(window.rows.Find(b)->Name(), u"b");
}

TEST(SortingTest, NewRowsAreAppended) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"c");
  window.sorting.SortBy(Name);
  window.AddRow(u"a");
  EXPECT_EQ(Names(window), (Texts{u"b", u"c", u"a"}));
}

TEST(SortingTest, AfterNewColumnsTheFirstClickSortsAscending) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.sorting.SortBy(Name);
  window.algorithms.Select(swr::FallbackAlgoMask);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b"}));
  window.sorting.SortBy(Name);
  EXPECT_FALSE(window.view.sortMarkDescending) << "treated as a first click";
}

TEST(SortingTest, AMissingColumnIsIgnored) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.sorting.SortBy(7);
  EXPECT_EQ(Names(window), (Texts{u"b", u"a"}));
  EXPECT_EQ(window.view.sortMark, std::nullopt);
}

}  // namespace
}  // namespace app::testing
