#include "swr/text/text_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

constexpr uint32_t untouched = 4711;

void ExpectText(const std::u16string& path, const std::u16string& text) {
  uint32_t error = untouched;
  EXPECT_EQ(ReadTextFile(path, &error), text);
  EXPECT_EQ(error, untouched);
  EXPECT_EQ(ReadTextFile(path, nullptr), text);
}

void ExpectFailure(const std::u16string& path, uint32_t expected) {
  uint32_t error = untouched;
  EXPECT_EQ(ReadTextFile(path, &error), std::nullopt);
  EXPECT_EQ(error, expected);
}

// --- Reading ------------------------------------------------------------------------------------

struct ContentCase {
  std::string_view description;
  std::string bytes;
  std::u16string text;
};

const ContentCase contentCases[] = {
    {"an empty file", "", u""},
    {"ASCII", "line 1\r\nline 2\n", u"line 1\r\nline 2\n"},
    {"UTF-8", "\xC3\xA9", u"\u00E9"},
    {"UTF-8 with a mark", "\xEF\xBB\xBF\xC3\xA9", u"\u00E9"},
    {"UTF-16", std::string("\xFF\xFE\x41\x00", 4), u"A"},
    {"a code page", "\xE9", u"\u00E9"},
};

TEST(ReadTextFileTest, DecodesWhatItReads) {
  TempTree tree;
  for (const ContentCase& row : contentCases) {
    SCOPED_TRACE(row.description);
    ExpectText(tree.AddFile(u"file", row.bytes), row.text);
  }
}

TEST(ReadTextFileTest, DoesNotReadAnEmptyFile) {
  TempTree tree;
  const InstalledFaults calls;
  ExpectText(tree.AddFile(u"file"), u"");
  EXPECT_EQ(calls.Count(SystemCall::ReadFile), 0u);
}

TEST(ReadTextFileTest, AcceptsLongPaths) {
  TempTree tree;
  ExpectText(AddFileWithLongPath(tree, 1100, "far below"), u"far below");
}

TEST(ReadTextFileTest, ReadsAFileThatIsHeldOpenForWriting) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "so far");
  const WritingHandle writer(path);
  ExpectText(path, u"so far");
}

// --- The limit ----------------------------------------------------------------------------------

TEST(ReadTextFileTest, ReadsTheLargestFile) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "A");
  ResizeFile(path, LargestTextFile - 1);
  AppendBytes(path, "Z");
  uint32_t error = untouched;
  const auto text = ReadTextFile(path, &error);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->size(), 67108864u);
  EXPECT_EQ(text->front(), u'A');
  EXPECT_EQ(text->back(), u'Z');
  EXPECT_EQ(error, untouched);
}

TEST(ReadTextFileTest, RefusesALargerFileWithoutReadingIt) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file");
  for (const uint64_t size : {LargestTextFile + 1, uint64_t{5} << 30}) {
    ResizeFile(path, size);
    const InstalledFaults calls;
    ExpectFailure(path, ErrorFileTooLarge);
    EXPECT_EQ(calls.Count(SystemCall::ReadFile), 0u);
    EXPECT_EQ(ReadTextFile(path, nullptr), std::nullopt);
  }
}

TEST(ReadTextFileTest, RefusesAFileOfUnknownSize) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "text");
  const InstalledFaults faults({{.call = SystemCall::FileInfo, .code = 5}});
  ExpectFailure(path, ErrorFileTooLarge);
}

// --- The file changes after its size was queried ------------------------------------------------

TEST(ReadTextFileTest, ReadsOnlyTheOldSizeOfAGrowingFile) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "old");
  const InstalledFaults faults(
      {{.call = SystemCall::ReadFile, .before = [&] { AppendBytes(path, " and new"); }}});
  uint32_t error = untouched;
  EXPECT_EQ(ReadTextFile(path, &error), u"old");
  EXPECT_EQ(error, untouched);
}

TEST(ReadTextFileTest, ReadsWhatIsLeftOfAShrinkingFile) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "long text");
  const InstalledFaults faults(
      {{.call = SystemCall::ReadFile, .before = [&] { ResizeFile(path, 4); }}});
  uint32_t error = untouched;
  EXPECT_EQ(ReadTextFile(path, &error), u"long");
  EXPECT_EQ(error, untouched);
}

// --- Failures -----------------------------------------------------------------------------------

TEST(ReadTextFileTest, ReportsWhyItCannotOpen) {
  TempTree tree;
  ExpectFailure(tree.Path(u"absent"), ErrorFileNotFound);
  EXPECT_EQ(ReadTextFile(tree.Path(u"absent"), nullptr), std::nullopt);
  const std::u16string path = tree.AddFile(u"file", "text");
  for (const uint32_t code : {3u, 5u, 32u}) {
    const InstalledFaults faults({{.call = SystemCall::OpenFile, .code = code}});
    ExpectFailure(path, code);
  }
}

TEST(ReadTextFileTest, ReportsWhyItCannotRead) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "text");
  const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = 0, .code = 23}});
  ExpectFailure(path, 23);
  EXPECT_EQ(ReadTextFile(path, nullptr), std::nullopt);
}

// Some drivers fail without an error code; the text is still incomplete.
TEST(ReadTextFileTest, AFailureWithoutACodeIsAFailure) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "text");
  const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = 0, .code = 0}});
  ExpectFailure(path, 0);
  EXPECT_EQ(ReadTextFile(path, nullptr), std::nullopt);
}

TEST(ReadTextFileTest, RefusesFolders) {
  TempTree tree;
  ExpectFailure(tree.Root(), ErrorAccessDenied);
}

}  // namespace
}  // namespace swr::testing
