#include "app/rows/shared_path.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "app/rows/row_table.h"
#include "swr/paths/path_forms.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"

namespace app {
namespace {

// A path is returned unchanged, and its parts are those of SplitPath.
void ExpectExact(const std::u16string& path) {
  SCOPED_TRACE(swr::WideToUtf8(path));
  SharedPath shared(path);
  FolderTexts texts;
  for (int i = 0; i < 2; ++i) {
    const swr::PathParts parts = swr::SplitPath(path);
    EXPECT_EQ(shared.Text(), path);
    EXPECT_EQ(shared.Size(), path.size());
    EXPECT_EQ(shared.Name(), parts.name);
    EXPECT_EQ(shared.Folder(), parts.folder);
    EXPECT_EQ(shared.CaseHash(), swr::CaseHash(path));
    EXPECT_TRUE(shared.EqualsNoCase(std::u16string_view(path)));
    shared.ShareFolder(texts);
  }
  std::u16string line = u"path: ";
  shared.AppendTo(line);
  EXPECT_EQ(line, u"path: " + path);
}

TEST(SharedPathTest, KeepsUnusualPaths) {
  for (const char16_t* path : {u"",
                               u"a",
                               u"/",
                               u"\\",
                               u"/a",
                               u"\\a",
                               u"C:\\",
                               u"C:\\a",
                               u"C:a",
                               u"C:",
                               u"C:/a\\b/c",
                               u"a/",
                               u"a\\",
                               u"//",
                               u"\\\\server\\share\\a",
                               u"\\\\?\\C:\\a",
                               u"a//b",
                               u"a\\\\b",
                               u"/\u00E9/\u4E2D",
                               u" / ",
                               u"a/\r\n"}) {
    ExpectExact(path);
  }
}

TEST(SharedPathTest, KeepsRandomPaths) {
  constexpr std::u16string_view units = u"aAbB:/\\.. \u00E9\u00C9";
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i) {
    std::u16string path;
    for (size_t length = random() % 12; length > 0; --length)
      path += units[random() % units.size()];
    ExpectExact(path);
  }
}

TEST(SharedPathTest, ComparesLikeItsText) {
  constexpr std::u16string_view units = u"aA/\\\u00E9\u00C9";
  std::mt19937 random(1);
  const auto path = [&] {
    std::u16string text;
    for (size_t length = random() % 4; length > 0; --length) text += units[random() % units.size()];
    return text;
  };
  for (int i = 0; i < 20'000; ++i) {
    const std::u16string a = path();
    const std::u16string b = path();
    const bool areEqual = swr::EqualsNoCase(a, b);
    EXPECT_EQ(SharedPath(a).EqualsNoCase(std::u16string_view(b)), areEqual);
    EXPECT_EQ(SharedPath(a).EqualsNoCase(SharedPath(b)), areEqual);
    if (areEqual) {
      EXPECT_EQ(SharedPath(a).CaseHash(), SharedPath(b).CaseHash());
    }
  }
}

TEST(FolderTextsTest, EachTextIsKeptOnceUntilItsLastPathIsGone) {
  FolderTexts texts;
  std::vector<SharedPath> paths = {u"d/a", u"d/b", u"e/a", u"d/c", u"D/a", u"d\\a", u"a"};
  for (SharedPath& path : paths) path.ShareFolder(texts);
  EXPECT_EQ(texts.Size(), 4u) << "d/, e/, D/ and d\\";
  EXPECT_EQ(paths[0].Folder().data(), paths[3].Folder().data());
  EXPECT_EQ(paths[5].Text(), u"d\\a");

  paths.erase(paths.begin(), paths.begin() + 3);
  texts.DropUnused();
  EXPECT_EQ(texts.Size(), 3u);
  EXPECT_EQ(paths[0].Text(), u"d/c");
  paths.clear();
  texts.DropUnused();
  EXPECT_EQ(texts.Size(), 0u);
}

TEST(FolderTextsTest, APathOutlivesTheTexts) {
  SharedPath path(u"d/a");
  {
    FolderTexts texts;
    path.ShareFolder(texts);
  }
  EXPECT_EQ(path.Text(), u"d/a");
}

TEST(FolderTextsTest, RowsInOneFolderShareItsText) {
  RowTable rows;
  for (const char16_t* path : {u"d/a", u"e/b", u"d/c"}) {
    Row row;
    row.path = path;
    rows.Append(std::move(row));
  }
  EXPECT_EQ(rows[0].Folder().data(), rows[2].Folder().data());
  rows.Remove(std::vector<uint64_t>{1, 2});
  EXPECT_EQ(rows[0].Path(), u"d/c");
  rows.Clear();
  Row row;
  row.path = u"d/a";
  EXPECT_EQ(rows.Append(std::move(row)).Path(), u"d/a");
}

}  // namespace
}  // namespace app
