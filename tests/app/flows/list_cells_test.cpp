#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/flows/list_columns.h"
#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

std::vector<std::u16string> Headings(const std::vector<ColumnSpec>& columns) {
  std::vector<std::u16string> headings;
  for (const ColumnSpec& column : columns) headings.push_back(column.heading);
  return headings;
}

TEST(ColumnsTest, OneForEachSelectedAlgorithmInCatalogueOrder) {
  FakeWindow window;
  EXPECT_EQ(Headings(window.view.columns),
            (std::vector<std::u16string>{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"SHA-256",
                                         u"Status"}));
  window.algorithms.Select(MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Blake3));
  EXPECT_EQ(Headings(window.view.columns),
            (std::vector<std::u16string>{u"Name", u"Folder", u"Size", u"CRC32", u"BLAKE3", u"MD4",
                                         u"Status"}));
}

TEST(ColumnsTest, OnlySizeIsRightAligned) {
  FakeWindow window;
  ASSERT_EQ(window.view.columns.size(), 7u);
  for (const ColumnSpec& column : window.view.columns) {
    EXPECT_EQ(column.rightAligned, column.heading == u"Size") << swr::WideToUtf8(column.heading);
  }
}

TEST(ColumnsTest, WidthFollowsTheLengthOfTheDigest) {
  struct Case {
    AlgoId algo;
    uint32_t width;
  };
  const Case cases[] = {{AlgoId::Crc32, 72},   {AlgoId::Xxh64, 128},  {AlgoId::Md5, 240},
                        {AlgoId::Sha1, 260},   {AlgoId::Sha256, 260}, {AlgoId::Sha384, 260},
                        {AlgoId::Sha512, 260}, {AlgoId::Xxh128, 240}};
  for (const Case& test : cases) {
    FakeView view;
    ListColumns(view).Rebuild(MaskOf(test.algo));
    const std::vector<ColumnSpec>& specs = view.columns;
    ASSERT_EQ(specs.size(), 5u);
    EXPECT_EQ(specs[3].width, test.width) << swr::WideToUtf8(swr::GetAlgo(test.algo).name);
    EXPECT_EQ(specs[0].width, 200u);
    EXPECT_EQ(specs[1].width, 160u);
    EXPECT_EQ(specs[2].width, 70u);
    EXPECT_EQ(specs[4].width, 90u);
  }
}

TEST(ColumnsTest, ARebuildKeepsOnlyTheFixedWidths) {
  FakeWindow window;
  for (ColumnSpec& column : window.view.columns) column.width += 11;
  window.algorithms.Select(MaskOf(AlgoId::Md5));
  ASSERT_EQ(window.view.columns.size(), 5u);
  EXPECT_EQ(window.view.columns[0].width, 211u);
  EXPECT_EQ(window.view.columns[1].width, 171u);
  EXPECT_EQ(window.view.columns[2].width, 81u);
  EXPECT_EQ(window.view.columns[3].width, 240u) << "of a digest column, from its length";
  EXPECT_EQ(window.view.columns[4].width, 101u);
}

TEST(CellTextTest, EachColumn) {
  FakeWindow window;
  Row& row = window.AddRow(u"C:\\folder\\a.bin", 1536);
  window.algorithms.Select(MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Crc32));
  EXPECT_EQ(window.cells.TextOf(0, 0), u"a.bin");
  EXPECT_EQ(window.cells.TextOf(0, 1), u"C:\\folder");
  EXPECT_EQ(window.cells.TextOf(0, 2), u"1.5 KB");
  EXPECT_EQ(window.cells.TextOf(0, 3), u"");
  EXPECT_EQ(window.cells.TextOf(0, 4), u"");
  EXPECT_EQ(window.cells.TextOf(0, 5), u"Waiting");

  window.Finish();
  EXPECT_EQ(window.cells.TextOf(0, 3), FakeDigestText(AlgoId::Crc32));
  EXPECT_EQ(window.cells.TextOf(0, 4), FakeDigestText(AlgoId::Md5));
  EXPECT_EQ(window.cells.TextOf(0, 5), u"Done");

  swr::DigestSlot letters = row.digests[swr::IndexOf(AlgoId::Crc32)];
  letters.bytes.fill(0xAB);
  row.digests.Set(swr::IndexOf(AlgoId::Crc32), letters);
  window.commands.Run(ID_UPPERCASE);
  EXPECT_EQ(window.cells.TextOf(0, 3), u"ABABABAB");
}

TEST(CellTextTest, AFailedRowShowsNoSize) {
  FakeWindow window;
  Row& row = window.AddRow(u"a");
  row.status = RowStatus::Failed;
  row.error = 2;
  EXPECT_EQ(window.cells.TextOf(0, 2), u"");
  EXPECT_EQ(window.cells.TextOf(0, window.columns.Defs().size() - 1), u"Missing");
}

TEST(CellTextTest, OutsideTheListThereIsNoText) {
  FakeWindow window;
  window.AddRow(u"a");
  EXPECT_EQ(window.cells.TextOf(1, 0), u"");
  EXPECT_EQ(window.cells.TextOf(0, window.columns.Defs().size()), u"");
}

TEST(CellTextTest, TheStatusShowsAMatchWithTheBox) {
  FakeWindow window;
  window.AddRow(u"a");
  window.algorithms.Select(MaskOf(AlgoId::Md5));
  window.Finish();
  window.rows.CompareWith(swr::ParsedHash{
      .digest = std::vector<uint8_t>(16, static_cast<uint8_t>(swr::IndexOf(AlgoId::Md5) + 1)),
      .candidates = {AlgoId::Md5}});
  EXPECT_EQ(window.cells.TextOf(0, window.columns.Defs().size() - 1), u"Match (MD5)");
}

}  // namespace
}  // namespace app::testing
