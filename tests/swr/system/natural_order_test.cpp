#include "swr/system/natural_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "swr/system/text_services.h"

namespace swr {
namespace {

using Texts = std::vector<std::u16string>;
using Order = std::vector<size_t>;

Order Numbers(size_t count) {
  Order numbers(count);
  std::iota(numbers.begin(), numbers.end(), size_t{0});
  return numbers;
}

Order Sorted(const Texts& texts, bool descending) {
  return SortNaturally(
      texts.size(), [&](size_t number) { return texts[number]; }, descending);
}

// The expected order: a stable sort by the comparison of two texts.
Order StablySorted(const Texts& texts, bool descending) {
  Order order = Numbers(texts.size());
  std::ranges::stable_sort(order, [&](size_t a, size_t b) {
    const int compared = SystemCompareNatural(texts[a], texts[b]);
    return descending ? compared > 0 : compared < 0;
  });
  return order;
}

void ExpectSorted(const Texts& texts) {
  for (const bool descending : {false, true}) {
    EXPECT_EQ(Sorted(texts, descending), StablySorted(texts, descending))
        << (descending ? "descending" : "ascending");
  }
}

TEST(SortNaturallyTest, SortsByNumbersAndIgnoresCase) {
  const Texts texts = {u"file 10", u"File 2", u"", u"file 1", u"b", u"A", u"file 002", u""};
  EXPECT_EQ(Sorted(texts, false), (Order{2, 7, 5, 4, 3, 1, 6, 0}));
  EXPECT_EQ(Sorted(texts, true), (Order{0, 1, 6, 3, 4, 5, 2, 7})) << "equal texts keep their order";
}

TEST(SortNaturallyTest, SortsNoTextAndOneText) {
  EXPECT_EQ(Sorted({}, false), Order{});
  EXPECT_EQ(Sorted({u"a"}, true), Order{0});
}

// The first bytes of the keys decide most comparisons, so the difference comes after them.
TEST(SortNaturallyTest, TextsThatDifferLateAreSorted) {
  for (size_t common = 0; common < 40; ++common) {
    SCOPED_TRACE(common);
    const std::u16string start(common, u'x');
    ExpectSorted({start + u"b", start, start + u"10", start + u"B", start + u"a", start + u"9",
                  start + u"x", start, start + u"\u00E9", start + u"\uFFFD", start + u"\u4E2D"});
  }
}

TEST(SortNaturallyTest, DigestsAreSorted) {
  std::mt19937 random(1);
  Texts texts;
  for (int i = 0; i < 3000; ++i) {
    std::u16string hex;
    // Some rows have no digest, and some digests begin alike.
    while (i % 7 != 0 && hex.size() < 64) {
      hex += u"0123456789abcdef"[hex.size() < 12 && i % 3 == 0 ? 10 : random() % 16];
    }
    texts.push_back(hex);
  }
  ExpectSorted(texts);
}

TEST(SortNaturallyTest, SortsRandomTextsLikeAStableSort) {
  std::u16string units = u"aAbBzZ001299 -_.[~\u00E9\u0131\u0430\u4E2D\uFFFD";
  units += {char16_t{0xD83D}, char16_t{1}, char16_t{0xFFFF}};  // not characters
  for (uint32_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const size_t alphabet = 1 + random() % units.size();
    const size_t longest = random() % 24;
    Texts texts(random() % 60);
    for (size_t i = 0; i < texts.size(); ++i) {
      if (i > 0 && random() % 3 == 0) texts[i] = texts[random() % i];
      for (size_t length = random() % (longest + 1); length > 0; --length) {
        texts[i] += units[random() % alphabet];
      }
    }
    ExpectSorted(texts);
  }
}

// Long lists are sorted on two threads.
TEST(SortNaturallyTest, ManyTextsAreSorted) {
  std::mt19937 random(1);
  Texts texts(40'000);
  for (std::u16string& text : texts) {
    for (size_t length = random() % 6; length > 0; --length) text += u"ab12"[random() % 4];
  }
  ExpectSorted(texts);
}

TEST(SortNaturallyTest, LongTextsAreSorted) {
  const std::u16string start(40'000, u'a');
  ExpectSorted({start + u"2", start + u"1", start, start + u"1", u"b", u"a"});
}

TEST(MergeSortedRunsTest, SortsRunsOfAnyLength) {
  for (uint32_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    Order order = Numbers(random() % 100);
    const Order sorted = order;
    for (size_t swaps = random() % 40; swaps > 0 && !order.empty(); --swaps) {
      std::swap(order[random() % order.size()], order[random() % order.size()]);
    }
    MergeSortedRuns(order, std::less<>());
    EXPECT_EQ(order, sorted);
  }
}

TEST(MergeSortedRunsTest, ComparesASortedListOnce) {
  Order order = Numbers(1000);
  size_t comparisons = 0;
  MergeSortedRuns(order, [&](size_t a, size_t b) { return ++comparisons, a < b; });
  EXPECT_EQ(order, Numbers(1000));
  EXPECT_EQ(comparisons, 999u);
}

}  // namespace
}  // namespace swr
