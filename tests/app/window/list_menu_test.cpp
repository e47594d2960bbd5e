#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;

void Give(ListRow& row, AlgoId algo) {
  swr::DigestSlot& slot = row.digests.Make(swr::IndexOf(algo));
  slot.present = true;
  slot.length = static_cast<uint8_t>(swr::GetAlgo(algo).digestSize);
  slot.bytes.fill(0xAB);
}

TEST(ListMenuTest, NothingSelectedHasNoMenu) {
  FakeWindow window;
  window.AddRow(u"a");
  window.main.ShowListContextMenu(std::nullopt);
  EXPECT_FALSE(window.view.listMenu);
}

TEST(ListMenuTest, WhatItOffersFollowsTheSelection) {
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
    ListRow& first = window.AddRow(u"a");
    for (const AlgoId algo : {AlgoId::Md2, AlgoId::Md5, AlgoId::Crc32}) Give(first, algo);
    window.AddRow(u"b");
    window.AddRow(u"c").status = RowStatus::Failed;
    window.view.selected = test.selected;
    window.main.ShowListContextMenu(ScreenPoint{3, 4});
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
  window.main.ShowListContextMenu(std::nullopt);
  EXPECT_EQ(window.desktop.clipboard, u"abababab");
  window.main.uppercase = true;
  window.main.ShowListContextMenu(std::nullopt);
  EXPECT_EQ(window.desktop.clipboard, u"ABABABAB");
}

TEST(ListMenuTest, AChoiceIsCarriedOut) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.view.selected = {0};
  window.main.ShowListContextMenu(std::nullopt);
  EXPECT_EQ(window.main.rows.size(), 2u) << "nothing was chosen";
  window.view.listMenuChoice = ListMenuChoice{.command = ID_CTX_REMOVE};
  window.main.ShowListContextMenu(std::nullopt);
  ASSERT_EQ(window.main.rows.size(), 1u);
  EXPECT_EQ(window.main.rows[0]->path, u"b");
}

}  // namespace
}  // namespace app::testing
