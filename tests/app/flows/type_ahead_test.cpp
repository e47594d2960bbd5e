#include "app/flows/type_ahead.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

TEST(TypeAheadTest, Table) {
  FakeWindow window;
  for (const char16_t* name : {u"alpha", u"Beta", u"bravo", u"\u00E9t\u00E9", u"be", u"a\u202Eb"}) {
    window.AddRow(name);
  }
  struct Case {
    const char* description;
    std::u16string typed;
    size_t first;
    std::optional<size_t> found;
    bool whole = false;
  };
  const Case cases[] = {
      {"the first row itself", u"a", 0, 0},
      {"the next one", u"a", 1, 5},
      {"in another case", u"b", 0, 1},
      {"in another case", u"B", 2, 2},
      {"past the end, from the top", u"b", 5, 1},
      {"only the row where the search began", u"al", 1, 0},
      {"a letter beyond ASCII", u"\u00C9", 0, 3},
      {"a longer prefix", u"bet", 0, 1},
      {"longer than any name", u"betaa", 0, std::nullopt},
      {"nothing", u"z", 0, std::nullopt},
      {"no text", u"", 0, std::nullopt},
      {"starting after the last row", u"a", 6, 0},
      {"starting far after it", u"b", 1000, 1},
      {"the whole name", u"BE", 0, 4, true},
      {"not a whole name", u"alph", 0, std::nullopt, true},
      {"a character that can't be displayed, as its code", u"a[u+202", 0, 5},
      {"such a name as a whole", u"a[U+202E]b", 0, 5, true},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    EXPECT_EQ(FindRowNamed(window.rows, test.typed, test.first, test.whole), test.found);
  }
}

TEST(TypeAheadTest, AnEmptyListHasNoRow) {
  const FakeWindow window;
  EXPECT_EQ(FindRowNamed(window.rows, u"a", 0, false), std::nullopt);
}

}  // namespace
}  // namespace app::testing
