// A sort moves the rows together with everything that is known about them.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr size_t Name = 0;

TEST(SortedListTest, EveryRowIsRedrawn) {
  FakeWindow window;
  window.AddRow(u"b");
  window.AddRow(u"a");
  const int before = window.view.redrawnWhole;
  window.sorting.SortBy(Name);
  EXPECT_GT(window.view.redrawnWhole, before);
}

TEST(SortedListTest, TheResultLineNamesTheRowThatMatches) {
  FakeWindow window;
  AddRow(window, {.name = u"c", .digests = {{AlgoId::Md5, 0xAA}}});
  AddRow(window, {.name = u"b", .digests = {{AlgoId::Md5, 0xBB}}});
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, 0xCC}}});
  window.view.SetExpectedText(FilledHex(16, 0xAA));
  const ResultLine match = {u"Match. The MD5 of c is the expected hash.", ResultKind::Good};
  ASSERT_EQ(window.Result(), match);
  window.sorting.SortBy(Name);
  EXPECT_EQ(window.Result(), match);
  window.sorting.SortBy(Name);
  EXPECT_EQ(window.Result(), match);
}

// The sentence about several matches names the algorithm of the first.
TEST(SortedListTest, TheFirstMatchIsTheFirstInTheNewOrder) {
  FakeWindow window;
  AddRow(window, {.name = u"b", .digests = {{AlgoId::Md5, 0xAA}}});
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Xxh128, 0xAA}}});
  window.view.SetExpectedText(FilledHex(16, 0xAA));
  EXPECT_EQ(window.Result(), (ResultLine{u"Match. 2 files have this MD5 hash.", ResultKind::Good}));
  window.sorting.SortBy(Name);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Match. 2 files have this XXH128 hash.", ResultKind::Good}));
}

TEST(SortedListTest, TheRowNamedWithTheValueIsFoundAgain) {
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Sha1));
  for (const char16_t* name : {u"c", u"b", u"a"}) {
    AddRow(window, {.name = name, .digests = {{AlgoId::Sha1, 0xBB}}});
  }
  window.view.SetExpectedText(FilledHex(20, 0xAA) + u"  c");
  const ResultLine verdict = {u"No match. c has a different SHA-1.", ResultKind::Bad};
  ASSERT_EQ(window.Result(), verdict);
  window.sorting.SortBy(Name);
  EXPECT_EQ(window.Result(), verdict);
}

// A result replaces the contribution of its own row to the counters, not that of the row that had
// its index before the sort.
TEST(SortedListTest, ALaterResultUpdatesTheCountersForItsOwnRow) {
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Sha256));
  AddRow(window, {.name = u"b", .status = RowStatus::Waiting, .expected = 0xBB}).size = 100;
  AddRow(window, {.name = u"a"}).size = 7;
  window.Recount();
  window.hashing.QueueRow(window.rows[0].id, swr::MaskOf(AlgoId::Sha256));
  window.sorting.SortBy(Name);

  swr::HashOutcome outcome = {.bytesRead = 101};
  outcome.digests.Make(swr::IndexOf(AlgoId::Sha256)).bytes.fill(0xBB);
  window.Finish(std::move(outcome));
  EXPECT_EQ(window.view.statusText, u"2 files, 108 bytes");
  EXPECT_EQ(window.Result(), (ResultLine{u"The file is OK.", ResultKind::Good}));
}

}  // namespace
}  // namespace app::testing
