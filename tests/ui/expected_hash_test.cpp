// Checking a download: a hash from a web page is entered in the box, and the result line shows the
// verdict.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint32_t Sha256Only = 8;
constexpr int controlKey = 0x11;

// With only SHA-256 selected.
StartOptions OnlySha256() {
  DeleteSettings();
  WriteSetting(u"Algorithms", Sha256Only);
  return {.keepSettings = true};
}

class ExpectedHashTest : public ::testing::Test {
 protected:
  void ExpectResult(const std::u16string& text) const {
    std::u16string shown;
    EXPECT_TRUE(WaitFor([&] { return (shown = window_.Text(IDC_RESULT)) == text; }))
        << swr::WideToUtf8(shown) << " instead of " << swr::WideToUtf8(text);
  }

  TempTree tree_;
  std::u16string abc_ = tree_.AddFile(u"abc.bin", DigestsOfAbc.input);
  std::u16string digits_ = tree_.AddFile(u"digits.bin", DigestsOfDigits.input);
  RunningWindow window_{OnlySha256()};
};

// SHA3-256 of "abc": FIPS 202 example value.
const std::u16string Sha3OfAbc =
    u"3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532";
const std::u16string Sha3OfAbcWithColons =
    u"3a:98:5d:a7:4f:e2:25:b2:04:5c:17:2d:6b:d3:90:bd:85:5f:08:6e:3e:9d:52:5b:46:bf:e2:45:11:43:15:"
    u"32";

std::u16string WithHyphens(std::u16string text) {
  for (char16_t& unit : text) unit = unit == u':' ? u'-' : unit;
  return text;
}

TEST_F(ExpectedHashTest, AnySpellingOfAnUnselectedAlgorithmIsCheckedAndAddsNoColumn) {
  struct Case {
    const char* description;
    std::u16string pasted;
    std::u16string algorithm;
  };
  const Case cases[] = {
      {"bare hexadecimal", Sha3OfAbc, u"SHA3-256"},
      {"in upper case", u"3A985DA74FE225B2045C172D6BD390BD855F086E3E9D525B46BFE24511431532",
       u"SHA3-256"},
      {"base64", u"Ophdp0/iJbIEXBcta9OQvYVfCG4+nVJbRr/iRRFDFTI=", u"SHA3-256"},
      {"an integrity value", u"sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=", u"SHA-256"},
      {"with 0x", u"0x" + Sha3OfAbc, u"SHA3-256"},
      {"with colons", Sha3OfAbcWithColons, u"SHA3-256"},
      {"with hyphens", WithHyphens(Sha3OfAbcWithColons), u"SHA3-256"},
      {"with a zero-width space at its end", Sha3OfAbc + u"\u200B", u"SHA3-256"},
      {"with a label", u"SHA3-256 checksum: " + Sha3OfAbc, u"SHA3-256"},
      {"a line that names another file", u"SHA3-256 (other.iso) = " + Sha3OfAbc, u"SHA3-256"},
      {"a line of a list", Sha3OfAbc + u" *other.iso\r\n", u"SHA3-256"},
  };
  const Texts headings = {u"Name", u"Folder", u"Size", u"SHA-256", u"Status"};
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    window_.Command(ID_CLEAR_LIST);
    window_.SetExpected(u"");
    window_.Drop({abc_, digits_});
    window_.WaitUntilIdle();
    CopyText(test.pasted);
    window_.Click(IDC_PASTE);
    ExpectResult(u"Match. The " + test.algorithm + u" of abc.bin is the expected hash.");
    window_.WaitUntilIdle();
    EXPECT_EQ(window_.Column(u"Status"), (Texts{u"Match (" + test.algorithm + u")", u"Done"}));
    EXPECT_EQ(window_.List().ColumnHeadings(), headings);
  }
}

TEST_F(ExpectedHashTest, ShowsThatItIsCheckingUntilAllIsRead) {
  const std::u16string large = tree_.AddFile(u"large.bin");
  window_.Drop({abc_});
  window_.WaitUntilIdle();
  swr::testing::ResizeFile(large, uint64_t{4} << 30);
  window_.Drop({large});
  window_.SetExpected(std::u16string(64, u'0'));
  EXPECT_EQ(window_.Text(IDC_RESULT), u"Checking...");
  EXPECT_TRUE(WaitFor([&] { return window_.Column(u"Status").back() == u"Hashing"; }));
  window_.Click(IDC_CANCEL);
  ExpectResult(u"No match. None of the 2 files has this hash.");
  ASSERT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_CANCEL); }));
  EXPECT_EQ(window_.Text(IDC_RESULT), u"No match. None of the 2 files has this hash.");
}

TEST_F(ExpectedHashTest, SaysWhatTheBoxContains) {
  window_.SetExpected(Sha3OfAbc);
  EXPECT_EQ(window_.Text(IDC_RESULT),
            u"Add the file to compare with this hash (SHA-256, SHA3-256 or BLAKE3).");
  window_.SetExpected(u"SHA1: " + std::u16string(DigestsOfAbc.sha1));
  EXPECT_EQ(window_.Text(IDC_RESULT), u"Add the file to compare with this SHA-1 hash.");
  window_.Drop({digits_});
  ExpectResult(u"No match. digits.bin has a different SHA-1.");
  window_.Drop({abc_});
  ExpectResult(u"Match. The SHA-1 of abc.bin is the expected hash.");
  window_.SetExpected(u"see below");
  EXPECT_EQ(window_.Text(IDC_RESULT),
            u"This doesn't look like a hash. Paste the hex or base64 value from the website.");
  window_.SetExpected(u"");
  EXPECT_EQ(window_.Text(IDC_RESULT), u"");
}

TEST_F(ExpectedHashTest, ControlVPastesIntoTheBoxFromAnywhere) {
  window_.Drop({abc_});
  window_.WaitUntilIdle();
  CopyText(u" \t" + std::u16string(DigestsOfAbc.sha256) + u"\r\n");
  window_.FocusOn(IDC_LIST);
  window_.TypeChord({controlKey, 'V'});
  ExpectResult(u"Match. The SHA-256 of abc.bin is the expected hash.");
  EXPECT_EQ(window_.Text(IDC_EXPECTED), DigestsOfAbc.sha256);
}

TEST_F(ExpectedHashTest, TheBoxEditsLikeAnyOther) {
  window_.SetExpected(u"12");
  window_.FocusOn(IDC_EXPECTED);
  window_.TypeChord({controlKey, 'A'});
  window_.TypeChord({controlKey, 'C'});
  EXPECT_TRUE(WaitFor([] { return CopiedText() == u"12"; }));
  CopyText(u"345");
  window_.TypeChord({controlKey, 'V'});
  EXPECT_TRUE(WaitFor([&] { return window_.Text(IDC_EXPECTED) == u"345"; }));
  window_.TypeChord({controlKey, 'V'});
  EXPECT_TRUE(WaitFor([&] { return window_.Text(IDC_EXPECTED) == u"345345"; }));
}

}  // namespace
}  // namespace app::testing
