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
  for (const auto& row : window.main.rows) names.push_back(row->name);
  return names;
}

TEST(SortingTest, ByNameInTheOrderOfAPerson) {
  FakeWindow window;
  for (const char16_t* name : {u"file 10", u"File 2", u"file 1", u"b", u"A"}) window.AddRow(name);
  window.main.SortByColumn(Name);
  EXPECT_EQ(Names(window), (Texts{u"A", u"b", u"file 1", u"File 2", u"file 10"}));
}

TEST(SortingTest, TheSecondClickTurnsItRoundAndTheThirdBack) {
  FakeWindow window;
  for (const char16_t* name : {u"b", u"a", u"c"}) window.AddRow(name);
  window.main.SortByColumn(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b", u"c"}));
  EXPECT_EQ(window.view.sortMark, Name);
  EXPECT_FALSE(window.view.sortMarkDescending);
  window.main.SortByColumn(Name);
  EXPECT_EQ(Names(window), (Texts{u"c", u"b", u"a"}));
  EXPECT_TRUE(window.view.sortMarkDescending);
  window.main.SortByColumn(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b", u"c"}));
  EXPECT_FALSE(window.view.sortMarkDescending);
}

TEST(SortingTest, AnotherColumnInBetweenStartsUpwards) {
  FakeWindow window;
  window.AddRow(u"b", 1);
  window.AddRow(u"a", 2);
  window.main.SortByColumn(Name);
  window.main.SortByColumn(Size);
  EXPECT_EQ(Names(window), (Texts{u"b", u"a"}));
  EXPECT_EQ(window.view.sortMark, Size);
  window.main.SortByColumn(Name);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b"}));
  EXPECT_FALSE(window.view.sortMarkDescending);
}

TEST(SortingTest, BySizeGoesByTheNumberThatARowHolds) {
  FakeWindow window;
  window.AddRow(u"large", 2000);
  window.AddRow(u"failed", 1500).status = RowStatus::Failed;
  window.AddRow(u"small", 999);
  window.main.SortByColumn(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"failed", u"large"}));
}

TEST(SortingTest, EqualRowsKeepTheirOrderInBothDirections) {
  FakeWindow window;
  window.AddRow(u"b", 5);
  window.AddRow(u"small", 1);
  window.AddRow(u"a", 5);
  window.AddRow(u"large", 9);
  window.main.SortByColumn(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"b", u"a", u"large"}));
  window.main.SortByColumn(Size);
  EXPECT_EQ(Names(window), (Texts{u"large", u"b", u"a", u"small"}));
  // An earlier sort decides between rows that are equal in this one.
  window.main.SortByColumn(Name);
  window.main.SortByColumn(Size);
  EXPECT_EQ(Names(window), (Texts{u"small", u"a", u"b", u"large"}));
}

TEST(SortingTest, RowsWithoutADigestComeFirst) {
  FakeWindow window;
  ListRow& done = window.AddRow(u"done");
  done.digests.Make(swr::IndexOf(swr::AlgoId::Md5)).present = true;
  done.digests.Make(swr::IndexOf(swr::AlgoId::Md5)).length = 16;
  window.AddRow(u"waiting");
  window.main.SortByColumn(Md5);
  EXPECT_EQ(Names(window), (Texts{u"waiting", u"done"}));
}

TEST(SortingTest, ByStatusGoesByItsText) {
  FakeWindow window;
  window.AddRow(u"waiting");
  window.AddRow(u"done").status = RowStatus::Done;
  ListRow& missing = window.AddRow(u"missing");
  missing.status = RowStatus::Failed;
  missing.error = 2;
  window.main.SortByColumn(Status);
  EXPECT_EQ(Names(window), (Texts{u"done", u"missing", u"waiting"}));
}

TEST(SortingTest, TheSelectionIsLostAndTheDetailsFollow) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.view.selected = {0};
  window.main.SortByColumn(Name);
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.view.details, u"2 files. Select one to see its details.");
}

TEST(SortingTest, RowsAreFoundByTheirIdAfterwards) {
  FakeWindow window;
  const uint64_t b = window.AddRow(u"b").id;
  const uint64_t a = window.AddRow(u"a").id;
  window.main.SortByColumn(Name);
  EXPECT_EQ(window.main.FindRow(a)->name, u"a");
  EXPECT_EQ(window.main.FindRow(b)->name, u"b");
}

TEST(SortingTest, LaterRowsLandAtTheEnd) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"c");
  window.main.SortByColumn(Name);
  window.AddRow(u"a");
  EXPECT_EQ(Names(window), (Texts{u"b", u"c", u"a"}));
}

TEST(SortingTest, NewColumnsAreNotSorted) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.main.SortByColumn(Name);
  window.main.SetAlgoMask(swr::FallbackAlgoMask);
  EXPECT_EQ(window.main.sortColumn, std::nullopt);
  EXPECT_EQ(Names(window), (Texts{u"a", u"b"}));
  window.main.SortByColumn(Name);
  EXPECT_FALSE(window.view.sortMarkDescending) << "a first click again";
}

TEST(SortingTest, AColumnThatIsNotThereIsIgnored) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  window.main.SortByColumn(7);
  EXPECT_EQ(Names(window), (Texts{u"b", u"a"}));
  EXPECT_EQ(window.view.sortMark, std::nullopt);
}

}  // namespace
}  // namespace app::testing
