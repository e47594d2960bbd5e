#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;

void Give(Row& row, AlgoId algo) {
  swr::DigestSlot slot;
  slot.present = true;
  slot.length = static_cast<uint8_t>(swr::GetAlgo(algo).digestSize);
  slot.bytes.fill(0xAB);
  row.digests.Set(swr::IndexOf(algo), slot);
}

TEST(ListMenuTest, WithoutASelectionThereIsNoMenu) {
  FakeWindow window;
  window.AddRow(u"a");
  window.listMenu.Show(std::nullopt);
  EXPECT_FALSE(window.view.listMenu);
}

TEST(ListMenuTest, OffersWhatTheSelectionAllows) {
  struct Case {
    const char* description;
    std::vector<size_t> selected;
    std::vector<AlgoId> digests;
    bool canLookUp;
    bool canCompare;
  };
  // Row 0 has digests that are not selected; row 1 has none; row 2 failed.
  const Case cases[] = {
      {"one row", {0}, {AlgoId::Crc32, AlgoId::Md5, AlgoId::Md2}, true, false},
      {"one row without digests", {1}, {}, true, false},
      {"a failed row", {2}, {}, false, false},
      {"two rows", {0, 1}, {}, false, true},
      {"three rows", {0, 1, 2}, {}, false, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    Row& first = window.AddRow(u"a");
    for (const AlgoId algo : {AlgoId::Md2, AlgoId::Md5, AlgoId::Crc32}) Give(first, algo);
    window.AddRow(u"b");
    window.AddRow(u"c").status = RowStatus::Failed;
    window.view.selected = test.selected;
    window.listMenu.Show(ScreenPoint{3, 4});
    ASSERT_TRUE(window.view.listMenu);
    EXPECT_EQ(window.view.listMenu->digests, test.digests);
    EXPECT_EQ(window.view.listMenu->canLookUp, test.canLookUp);
    EXPECT_EQ(window.view.listMenu->canCompare, test.canCompare);
    ASSERT_TRUE(window.view.listMenuPlace);
    EXPECT_EQ(window.view.listMenuPlace->x, 3);
    EXPECT_EQ(window.view.listMenuPlace->y, 4);
  }
}

TEST(ListMenuTest, ADigestIsCopiedAloneWhateverIsSelected) {
  FakeWindow window;
  Give(window.AddRow(u"a"), AlgoId::Crc32);
  window.view.selected = {0};
  window.view.listMenuChoice = ListMenuChoice{.digest = AlgoId::Crc32};
  window.listMenu.Show(std::nullopt);
  EXPECT_EQ(window.desktop.clipboard, u"abababab");
  window.options.uppercase = true;
  window.listMenu.Show(std::nullopt);
  EXPECT_EQ(window.desktop.clipboard, u"ABABABAB");
}

TEST(ListMenuTest, TheChosenCommandIsCarriedOut) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.view.selected = {0};
  window.listMenu.Show(std::nullopt);
  EXPECT_EQ(window.rows.Size(), 2u) << "nothing was chosen";
  window.view.listMenuChoice = ListMenuChoice{.command = ID_CTX_REMOVE};
  window.listMenu.Show(std::nullopt);
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].Path(), u"b");
}

}  // namespace
}  // namespace app::testing
