#include "cli/options/option_table.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "cli/options/help_text.h"

namespace cli::testing {
namespace {

TEST(OptionTableTest, OptionsAreInOrderAndHaveUniqueNames) {
  std::set<std::string_view> longNames;
  std::set<char> shortNames;
  for (size_t i = 0; i < AllOptions().size(); ++i) {
    const OptionRow& row = AllOptions()[i];
    EXPECT_EQ(static_cast<size_t>(row.id), i) << row.longName;
    EXPECT_EQ(&GetOption(row.id), &row);
    EXPECT_TRUE(longNames.insert(row.longName).second) << row.longName;
    const bool isTaken = row.shortName != 0 && !shortNames.insert(row.shortName).second;
    EXPECT_FALSE(isTaken) << row.longName;
    EXPECT_EQ(row.kind == ValueKind::None, row.valueName.empty()) << row.longName;
    EXPECT_FALSE(row.help.empty() || row.help.ends_with('.')) << row.longName;
    EXPECT_TRUE(row.manual.empty() || row.manual.ends_with('.')) << row.longName;
    EXPECT_LE(AllOptions()[i > 0 ? i - 1 : 0].group, row.group) << row.longName;
  }
}

TEST(OptionTableTest, TheHelpListsEveryOptionIn80Columns) {
  const std::string help = HelpText();
  for (const OptionRow& row : AllOptions()) {
    EXPECT_NE(help.find("--" + std::string(row.longName)), help.npos) << row.longName;
  }
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 80u) << line;
    EXPECT_FALSE(line.ends_with(' ')) << line;
  }
}

}  // namespace
}  // namespace cli::testing
