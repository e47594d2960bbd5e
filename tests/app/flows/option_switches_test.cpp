#include "app/flows/option_switches.h"

#include <gtest/gtest.h>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

constexpr AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

TEST(OptionsTest, EachCommandTogglesItsOption) {
  FakeWindow window;
  window.commands.Run(ID_UPPERCASE);
  EXPECT_TRUE(window.options.uppercase);
  EXPECT_TRUE(window.view.options.uppercase);
  EXPECT_GT(window.view.redrawnWhole, 0);
  window.commands.Run(ID_INCLUDE_HIDDEN);
  EXPECT_TRUE(window.options.includeHidden);
  EXPECT_TRUE(window.view.options.includeHidden);
  window.commands.Run(ID_SHOW_LEGACY);
  EXPECT_TRUE(window.options.showLegacy);
  EXPECT_TRUE(window.view.options.showLegacy);
  window.commands.Run(ID_CRLF);
  EXPECT_TRUE(window.options.crLf);
  EXPECT_TRUE(window.view.options.crLf);
  window.commands.Run(ID_UPPERCASE);
  EXPECT_FALSE(window.view.options.uppercase);
  EXPECT_TRUE(window.view.options.crLf);
}

TEST(OptionsTest, HidingTheLegacyAlgorithmsDeselectsThem) {
  struct Case {
    const char* description;
    AlgoMask before;
    AlgoMask after;
  };
  const Case cases[] = {
      {"MD4 among others", MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Md5), MaskOf(AlgoId::Md5)},
      {"nothing else selected", swr::LegacyAlgoMask, Sha256},
      {"none selected", MaskOf(AlgoId::Blake3), MaskOf(AlgoId::Blake3)},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.commands.Run(ID_SHOW_LEGACY);
    window.algorithms.Select(test.before);
    window.commands.Run(ID_SHOW_LEGACY);
    EXPECT_EQ(window.options.algorithms, test.after);
    window.commands.Run(ID_SHOW_LEGACY);
    EXPECT_EQ(window.options.algorithms, test.after) << "showing them again selects nothing";
  }
}

}  // namespace
}  // namespace app::testing
