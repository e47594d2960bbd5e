#include "app/flows/algorithm_selection.h"

#include <gtest/gtest.h>

#include <string>

#include "app/screen/algo_boxes.h"
#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

constexpr AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

TEST(AlgoSelectionTest, StartsWithTheDefault) {
  FakeWindow window;
  EXPECT_EQ(window.view.shownMask, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.moreText, u"&More...");
}

// A program can set a check box, or send its message, without a click.
TEST(AlgoSelectionTest, TheStateOfABoxIsReadAndNotToggled) {
  for (const AlgoBox& box : AlgoBoxes) {
    for (const bool isChecked : {true, false}) {
      FakeWindow window;
      window.algorithms.Select(MaskOf(AlgoId::Md4));
      for (int times = 0; times < 2; ++times) {
        window.view.checkedBoxes = isChecked ? MaskOf(box.algo) : 0;
        window.commands.Run(box.control);
        EXPECT_EQ(window.options.algorithms, MaskOf(AlgoId::Md4) | window.view.checkedBoxes);
      }
    }
  }
}

TEST(AlgoSelectionTest, EachBoxSelectsItsAlgorithm) {
  for (const AlgoBox& box : AlgoBoxes) {
    FakeWindow window;
    window.algorithms.Select(MaskOf(AlgoId::Md4));
    window.ClickBox(box);
    EXPECT_EQ(window.options.algorithms, MaskOf(AlgoId::Md4) | MaskOf(box.algo));
    window.ClickBox(box);
    EXPECT_EQ(window.options.algorithms, MaskOf(AlgoId::Md4));
  }
}

TEST(AlgoSelectionTest, DeselectingTheLastBoxSelectsSha256) {
  FakeWindow window;
  window.algorithms.Select(MaskOf(AlgoId::Md5));
  window.ClickBox({IDC_ALGO_MD5, AlgoId::Md5});
  EXPECT_EQ(window.options.algorithms, Sha256);
  EXPECT_EQ(window.view.shownMask, Sha256);
  window.ClickBox({IDC_ALGO_SHA256, AlgoId::Sha256});
  EXPECT_EQ(window.options.algorithms, Sha256);
}

TEST(AlgoSelectionTest, TheMoreButtonCountsAlgorithmsWithoutABox) {
  struct Case {
    AlgoMask mask;
    std::u16string text;
  };
  const Case cases[] = {
      {Sha256, u"&More..."},
      {Sha256 | MaskOf(AlgoId::Crc32), u"&More (+1)..."},
      {MaskOf(AlgoId::Xxh64) | MaskOf(AlgoId::Sha384), u"&More (+2)..."},
      {swr::AllAlgosMask, u"&More (+10)..."},
  };
  for (const Case& test : cases) {
    FakeWindow window;
    window.algorithms.Select(test.mask);
    EXPECT_EQ(window.view.moreText, test.text) << swr::WideToUtf8(window.view.moreText);
  }
}

TEST(AlgoSelectionTest, TheMoreMenuTogglesTheChosenAlgorithm) {
  FakeWindow window;
  window.commands.Run(IDC_ALGO_MORE);
  EXPECT_EQ(window.options.algorithms, swr::DefaultAlgoMask) << "nothing chosen";
  window.view.algoToChoose = AlgoId::Crc32;
  window.commands.Run(IDC_ALGO_MORE);
  EXPECT_EQ(window.options.algorithms, swr::DefaultAlgoMask | MaskOf(AlgoId::Crc32));
  window.commands.Run(IDC_ALGO_MORE);
  EXPECT_EQ(window.options.algorithms, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.menuMask, swr::DefaultAlgoMask | MaskOf(AlgoId::Crc32));
  EXPECT_FALSE(window.view.menuHadLegacy);
}

}  // namespace
}  // namespace app::testing
