#include "swr/system/directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

TEST(DirectoryTest, ReportsTheEntries) {
  TempTree tree;
  tree.AddFile(u"file", "12345");
  tree.AddFile(u"folder/inside");
  Hide(tree.AddFile(u".hidden", "1"));
  std::vector<DirectoryEntry> entries;
  ASSERT_EQ(ReadDirectory(ToLongPath(tree.Root()), entries), 0u);
  std::ranges::sort(entries, {}, &DirectoryEntry::name);
  ASSERT_EQ(entries.size(), 3u);

  EXPECT_EQ(entries[0].name, u".hidden");
  EXPECT_TRUE(entries[0].isHidden);
  EXPECT_FALSE(entries[0].isDirectory);
  EXPECT_EQ(entries[0].size, 1u);

  EXPECT_EQ(entries[1].name, u"file");
  EXPECT_FALSE(entries[1].isHidden);
  EXPECT_FALSE(entries[1].isDirectory);
  EXPECT_FALSE(entries[1].isLink);
  EXPECT_EQ(entries[1].size, 5u);

  EXPECT_EQ(entries[2].name, u"folder");
  EXPECT_FALSE(entries[2].isHidden);
  EXPECT_TRUE(entries[2].isDirectory);
  EXPECT_FALSE(entries[2].isLink);
  EXPECT_EQ(entries[2].size, 0u);
}

TEST(DirectoryTest, KeepsEarlierEntries) {
  TempTree tree;
  tree.AddFile(u"file");
  std::vector<DirectoryEntry> entries = {{.name = u"before"}};
  ASSERT_EQ(ReadDirectory(ToLongPath(tree.Root()), entries), 0u);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].name, u"before");
}

TEST(DirectoryTest, FindsNothingInAnEmptyFolder) {
  TempTree tree;
  std::vector<DirectoryEntry> entries;
  EXPECT_EQ(ReadDirectory(ToLongPath(tree.Root()), entries), 0u);
  EXPECT_TRUE(entries.empty());
}

TEST(DirectoryTest, AppendsNothingWhenItFails) {
  TempTree tree;
  tree.AddFile(u"file");
  std::vector<DirectoryEntry> entries;
  EXPECT_EQ(ReadDirectory(ToLongPath(tree.Path(u"absent")), entries), ErrorPathNotFound);
  EXPECT_NE(ReadDirectory(ToLongPath(tree.Path(u"file")), entries), 0u);
  const InstalledFaults faults({{.call = SystemCall::ListDirectory, .code = 21}});
  EXPECT_EQ(ReadDirectory(ToLongPath(tree.Root()), entries), 21u);
  EXPECT_TRUE(entries.empty());
}

TEST(DirectoryTest, AnErrorInTheMiddleEndsTheListing) {
  TempTree tree;
  for (const std::u16string_view name : {u"a", u"b", u"c", u"d"}) tree.AddFile(name);
  const auto namesWith = [&](std::vector<PlannedFault> planned, uint32_t* reads = nullptr) {
    const InstalledFaults faults(std::move(planned));
    std::vector<DirectoryEntry> entries;
    EXPECT_EQ(ReadDirectory(ToLongPath(tree.Root()), entries), 0u);
    if (reads != nullptr) *reads = faults.Count(SystemCall::NextEntry);
    std::vector<std::u16string> names;
    for (const DirectoryEntry& entry : entries) names.push_back(entry.name);
    return names;
  };
  uint32_t reads = 0;
  const std::vector<std::u16string> all = namesWith({}, &reads);
  ASSERT_EQ(all.size(), 4u);
  size_t before = 0;
  for (uint32_t nth = 1; nth <= reads; ++nth) {
    SCOPED_TRACE(nth);
    const auto names = namesWith({{.call = SystemCall::NextEntry, .nth = nth, .code = 59}});
    EXPECT_TRUE(std::equal(names.begin(), names.end(), all.begin()));
    EXPECT_TRUE(names.size() == before || names.size() == before + 1);
    before = names.size();
  }
  EXPECT_EQ(before, all.size()) << "the last failure is at the end of the listing";
}

}  // namespace
}  // namespace swr::testing
