#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

std::u16string Hash(size_t bytes) { return FilledHex(bytes, 0xAB); }

std::u16string Banner(std::u16string_view label) {
  return u"The clipboard contains " + std::u16string(label) +
         u".  <a id=\"a\">Compare</a>    <a id=\"x\">Dismiss</a>";
}

// Activates the window with this text on the clipboard.
void ActivateWith(FakeWindow& window, const std::optional<std::u16string>& text) {
  window.desktop.Copy(text);
  window.clipboardWatch.Check();
}

struct LabelCase {
  const char* description;
  std::optional<std::u16string> clipboard;
  std::optional<std::u16string> banner;
};

TEST(CheckClipboardTest, OffersWhatLooksLikeAHash) {
  const LabelCase cases[] = {
      {"no text", std::nullopt, std::nullopt},
      {"an empty text", u"", std::nullopt},
      {"words", u"hello world", std::nullopt},
      // Lengths.
      {"4 bytes are too short", Hash(4), std::nullopt},
      {"8 bytes are too short", Hash(8), std::nullopt},
      {"10 bytes belong to no algorithm", Hash(10), std::nullopt},
      {"16 bytes", Hash(16), Banner(u"a 128-bit hash")},
      {"20 bytes", Hash(20), Banner(u"a 160-bit hash")},
      {"32 bytes", Hash(32), Banner(u"a 256-bit hash")},
      {"48 bytes", Hash(48), Banner(u"a 384-bit hash")},
      {"64 bytes", Hash(64), Banner(u"a 512-bit hash")},
      // Names.
      {"a tagged line", u"SHA256 (a.iso) = " + Hash(32), Banner(u"a SHA-256 hash")},
      {"a label", u"MD5: " + Hash(16), Banner(u"a MD5 hash")},
      {"a label of 16 bytes", u"XXH128=" + Hash(16), Banner(u"a XXH128 hash")},
      {"BLAKE3", u"BLAKE3 (a) = " + Hash(32), Banner(u"a BLAKE3 hash")},
      {"a CRC32 with its name is too short too", u"CRC32: " + Hash(4), std::nullopt},
      {"a line of a list names no algorithm", Hash(20) + u"  a.iso", Banner(u"a 160-bit hash")},
      // Spellings.
      {"surrounding blanks", u"\r\n \u00A0" + Hash(32) + u"\u200B\n", Banner(u"a 256-bit hash")},
      {"a line feed inside", Hash(32) + u"\n" + Hash(32), std::nullopt},
      {"an earlier line", u"the hash\n" + Hash(32), std::nullopt},
      {"base64 without a label", u"q6urq6urq6urq6urq6urq6urq6urq6urq6urq6urq6s=", std::nullopt},
      {"base64 after a label", u"SHA-256: q6urq6urq6urq6urq6urq6urq6urq6urq6urq6urq6s=",
       Banner(u"a SHA-256 hash")},
      {"an integrity value", u"sha256-q6urq6urq6urq6urq6urq6urq6urq6urq6urq6urq6s=",
       Banner(u"a SHA-256 hash")},
      {"hyphens", u"ABABABAB-ABABABAB-ABABABAB-ABABABAB", std::nullopt},
      {"colons and upper case", u"AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB:AB",
       Banner(u"a 128-bit hash")},
      {"the longest text", Hash(20) + u"  " + std::u16string(258, u'n'), Banner(u"a 160-bit hash")},
      {"one unit longer", Hash(20) + u"  " + std::u16string(259, u'n'), std::nullopt},
  };
  for (const LabelCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    ActivateWith(window, test.clipboard);
    EXPECT_EQ(window.view.banner, test.banner);
    EXPECT_EQ(window.banners.Kind(), test.banner ? BannerKind::Clipboard : BannerKind::None);
    EXPECT_EQ(window.banners.Payload(), test.banner ? *test.clipboard : u"");
    EXPECT_EQ(window.view.expectedText, u"") << "an offer does not fill the box";
    EXPECT_EQ(window.Result(), (ResultLine{u"", ResultKind::None}));
  }
}

TEST(CheckClipboardTest, EachContentIsCheckedOnce) {
  FakeWindow window;
  window.clipboardWatch.Check();
  EXPECT_EQ(window.desktop.clipboardReads, 0) << "nothing was copied";
  ActivateWith(window, Hash(32));
  EXPECT_EQ(window.desktop.clipboardReads, 1);
  window.banners.Hide();
  window.clipboardWatch.Check();
  EXPECT_EQ(window.desktop.clipboardReads, 1);
  EXPECT_FALSE(window.view.banner);
}

TEST(CheckClipboardTest, UnreadableContentIsNotCheckedAgain) {
  FakeWindow window;
  ActivateWith(window, std::nullopt);
  window.desktop.clipboard = Hash(32);
  window.clipboardWatch.Check();
  EXPECT_FALSE(window.view.banner);
  EXPECT_EQ(window.desktop.clipboardReads, 1);
}

TEST(CheckClipboardTest, ContentCopiedBeforeTheStartIsChecked) {
  FakeWindow window;
  window.desktop.clipboard = Hash(32);
  window.desktop.clipboardSequence = 4711;
  window.clipboardWatch.Check();
  EXPECT_EQ(window.view.banner, Banner(u"a 256-bit hash"));
}

TEST(CheckClipboardTest, ALaterHashReplacesTheOffer) {
  FakeWindow window;
  ActivateWith(window, Hash(32));
  ActivateWith(window, Hash(20));
  EXPECT_EQ(window.view.banner, Banner(u"a 160-bit hash"));
  EXPECT_EQ(window.banners.Payload(), Hash(20));
  ActivateWith(window, u"no hash");
  EXPECT_EQ(window.view.banner, Banner(u"a 160-bit hash")) << "other text does not hide the offer";
}

TEST(CheckClipboardTest, EveryOtherBannerTakesPrecedence) {
  for (const BannerKind kind :
       {BannerKind::ChecksumFileOffer, BannerKind::StaleExplorer, BannerKind::SkippedLines}) {
    FakeWindow window;
    window.banners.Show(kind, u"other", u"payload");
    ActivateWith(window, Hash(32));
    EXPECT_EQ(window.view.banner, u"other");
    EXPECT_EQ(window.banners.Kind(), kind);
    window.bannerLinks.Follow(u"x");
    window.clipboardWatch.Check();
    EXPECT_FALSE(window.view.banner) << "this content has been checked";
    ActivateWith(window, Hash(32));
    EXPECT_EQ(window.view.banner, Banner(u"a 256-bit hash")) << "copied again";
  }
}

// ---- When nothing is offered.

TEST(CheckClipboardTest, ADismissedTextIsNotOfferedAgain) {
  FakeWindow window;
  const std::u16string dismissed = Hash(32);
  ActivateWith(window, dismissed);
  window.bannerLinks.Follow(u"x");
  struct Case {
    const char* description;
    std::u16string clipboard;
    bool offered;
  };
  const Case cases[] = {
      {"again", dismissed, false},
      {"another", Hash(20), true},
      {"again, after another", dismissed, false},
      {"the same with a blank is a different text", dismissed + u" ", true},
      {"the same in upper case is a different text", std::u16string(u"AB") + dismissed.substr(2),
       true},
      {"the first text again", dismissed, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    window.banners.Hide();
    ActivateWith(window, test.clipboard);
    EXPECT_EQ(window.view.banner.has_value(), test.offered);
  }
  // Only the last dismissal is remembered.
  window.banners.Hide();
  ActivateWith(window, Hash(20));
  window.bannerLinks.Follow(u"x");
  ActivateWith(window, dismissed);
  EXPECT_EQ(window.view.banner, Banner(u"a 256-bit hash"));
}

TEST(CheckClipboardTest, OnlyDismissIsADismissal) {
  struct Case {
    const char* description;
    std::function<void(FakeWindow&)> end;
  };
  const Case cases[] = {
      {"compared, and the box emptied",
       [](FakeWindow& window) {
         window.bannerLinks.Follow(u"a");
         window.view.SetExpectedText(u"");
       }},
      {"hidden by typing", [](FakeWindow& window) { window.view.SetExpectedText(u"x"); }},
      {"hidden by clearing the list", [](FakeWindow& window) { window.edits.Clear(); }},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    ActivateWith(window, Hash(32));
    test.end(window);
    EXPECT_FALSE(window.view.banner);
    window.clipboardWatch.Check();
    EXPECT_FALSE(window.view.banner) << "offered again only after it is copied again";
    ActivateWith(window, Hash(32));
    EXPECT_EQ(window.view.banner, Banner(u"a 256-bit hash"));
  }
}

TEST(CheckClipboardTest, TheContentOfTheBoxIsNotOffered) {
  struct Case {
    const char* description;
    std::u16string box;
    std::u16string clipboard;
    bool offered;
  };
  const Case cases[] = {
      {"the same", Hash(32), Hash(32), false},
      {"blanks around the copy", Hash(32), u" " + Hash(32) + u"\r\n", false},
      {"blanks around the box", u"\u00A0" + Hash(32) + u" ", Hash(32), false},
      {"in upper case", Hash(16), std::u16string(u"AB") + Hash(15), true},
      {"another", Hash(32), Hash(20), true},
      {"the same hash in a line", Hash(32), Hash(32) + u"  a.iso", true},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.view.SetExpectedText(test.box);
    ActivateWith(window, test.clipboard);
    EXPECT_EQ(window.view.banner.has_value(), test.offered);
    EXPECT_EQ(window.view.expectedText, test.box);
  }
}

TEST(CheckClipboardTest, AComparedHashIsNotOfferedAgain) {
  FakeWindow window;
  ActivateWith(window, Hash(32) + u"\n");
  window.bannerLinks.Follow(u"a");
  EXPECT_EQ(window.view.expectedText, Hash(32));
  ActivateWith(window, Hash(32));
  EXPECT_FALSE(window.view.banner);
}

}  // namespace
}  // namespace app::testing
