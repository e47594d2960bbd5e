// The offer to compare a hash that the user has copied elsewhere.
#include <gtest/gtest.h>

#include <string>

#include "app/desktop/clipboard_win.h"
#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

const std::u16string Links = u".  <a id=\"a\">Compare</a>    <a id=\"x\">Dismiss</a>";

class ClipboardTest : public ::testing::Test {
 protected:
  ClipboardTest() { EmptyClipboardNow(); }

  // The text of the banner after a text was copied and the window became active again; empty when
  // there is none.
  std::u16string OfferFor(const RunningWindow& window, const std::u16string& copied) {
    CopyText(copied);
    window.ActivateAgain();
    return window.IsShown(IDC_BANNER) ? window.Text(IDC_BANNER) : std::u16string();
  }
};

// The memory of the clipboard grows with the text and shrinks at its end.
TEST_F(ClipboardTest, TextsOfAnotherLengthThanExpectedAreCopiedWhole) {
  std::u16string whole;
  for (int i = 0; i < 1000; ++i) whole += u"part ";
  const auto writeParts = [](const TextInParts::Append& append) {
    for (int i = 0; i < 1000; ++i) append(u"part ");
  };
  for (const size_t likelySize : {size_t{0}, size_t{7}, whole.size(), 10 * whole.size()}) {
    SCOPED_TRACE(likelySize);
    EmptyClipboardNow();
    // Another program may have the clipboard open just now.
    EXPECT_TRUE(WaitFor([&] {
      WriteClipboardText(nullptr, {likelySize, writeParts});
      return CopiedText() == whole;
    }));
  }
}

TEST_F(ClipboardTest, ChecksTheClipboardAtTheStart) {
  CopyText(std::u16string(DigestsOfAbc.sha256));
  const RunningWindow window;
  window.ActivateAgain();
  EXPECT_TRUE(window.IsShown(IDC_BANNER));
  EXPECT_EQ(window.Text(IDC_BANNER), u"The clipboard contains a 256-bit hash" + Links);
}

TEST_F(ClipboardTest, ComparePutsTheValueIntoTheBox) {
  TempTree tree;
  const RunningWindow window;
  window.Drop({tree.AddFile(u"abc.bin", DigestsOfAbc.input)});
  window.WaitUntilIdle();
  const std::u16string line = u"MD5 (abc.bin) = " + std::u16string(DigestsOfAbc.md5);
  ASSERT_EQ(OfferFor(window, line + u"\r\n"), u"The clipboard contains a MD5 hash" + Links);
  window.FollowBannerLink(AcceptLink);
  ASSERT_TRUE(WaitFor([&] { return window.Text(IDC_EXPECTED) == line; }));
  EXPECT_EQ(window.Text(IDC_RESULT), u"Match. The MD5 of abc.bin is the expected hash.");
  EXPECT_FALSE(window.IsShown(IDC_BANNER));
  EXPECT_EQ(OfferFor(window, u" " + line), u"") << "the box already contains it";
}

TEST_F(ClipboardTest, ADismissedTextIsNotOfferedAgain) {
  const RunningWindow window;
  const std::u16string hash(DigestsOfAbc.sha1);
  ASSERT_EQ(OfferFor(window, hash), u"The clipboard contains a 160-bit hash" + Links);
  window.FollowBannerLink(DismissLink);
  ASSERT_TRUE(WaitFor([&] { return !window.IsShown(IDC_BANNER); }));
  EXPECT_EQ(OfferFor(window, hash), u"");
  EXPECT_EQ(OfferFor(window, u"no hash"), u"");
  EXPECT_EQ(OfferFor(window, hash), u"");
  EXPECT_EQ(OfferFor(window, std::u16string(DigestsOfAbc.sha512)),
            u"The clipboard contains a 512-bit hash" + Links);
}

TEST_F(ClipboardTest, ChecksEachContentOnce) {
  const RunningWindow window;
  ASSERT_NE(OfferFor(window, std::u16string(DigestsOfAbc.sha1)), u"");
  window.SetExpected(u"1");
  EXPECT_FALSE(window.IsShown(IDC_BANNER)) << "typing hides the offer";
  window.ActivateAgain();
  EXPECT_FALSE(window.IsShown(IDC_BANNER));
}

TEST_F(ClipboardTest, DoesNotOfferOtherText) {
  const RunningWindow window;
  for (const std::u16string_view text :
       {u"3610a686", u"two words", u"ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0="}) {
    EXPECT_EQ(OfferFor(window, std::u16string(text)), u"") << swr::WideToUtf8(text);
  }
}

}  // namespace
}  // namespace app::testing
