#include "tests/support/selected_tests.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace swr::testing {
namespace {

// As GoogleTest matches them: `*` is any text, `?` any character.
bool Matches(std::string_view pattern, std::string_view name) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*') {
    return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
  }
  return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
         Matches(pattern.substr(1), name.substr(1));
}

std::vector<std::string> NamesOfAllTests() {
  std::vector<std::string> names;
  const ::testing::UnitTest& tests = *::testing::UnitTest::GetInstance();
  for (int i = 0; i < tests.total_test_suite_count(); ++i) {
    const ::testing::TestSuite& suite = *tests.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      names.push_back(std::string(suite.name()) + "." + suite.GetTestInfo(j)->name());
    }
  }
  return names;
}

// The patterns that select tests; those after the hyphen exclude tests.
std::vector<std::string> SelectingPatterns() {
  const std::string filter = GTEST_FLAG_GET(filter);
  if (filter.empty()) return {""};  // which selects nothing
  std::istringstream list(filter.substr(0, filter.find('-')));
  std::vector<std::string> patterns;
  for (std::string pattern; std::getline(list, pattern, ':');) patterns.push_back(pattern);
  return patterns;
}

// Reports each pattern without a test, like GoogleTest on the standard output.
bool EveryPatternMatches() {
  const std::vector<std::string> names = NamesOfAllTests();
  bool doAllMatch = true;
  for (const std::string& pattern : SelectingPatterns()) {
    bool isMatched = false;
    for (const std::string& name : names) isMatched = isMatched || Matches(pattern, name);
    if (isMatched) continue;
    std::printf("no test matches \"%s\"\n", pattern.c_str());
    doAllMatch = false;
  }
  return doAllMatch;
}

}  // namespace

int RunSelectedTests() {
  constexpr int wrongFilter = 2;
  return EveryPatternMatches() ? RUN_ALL_TESTS() : wrongFilter;
}

}  // namespace swr::testing
