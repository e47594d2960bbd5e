// Checksum files in the real window: opened with the command and its dialog, and dropped.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

const std::u16string OfferMarkup =
    u"This looks like a checksum file. <a id=\"a\">Verify the files it lists</a>    "
    u"<a id=\"x\">Dismiss</a>";

std::string Line(std::u16string_view digest, const std::string& name) {
  return swr::WideToUtf8(digest) + "  " + name + "\n";
}

class VerifyTest : public ::testing::Test {
 protected:
  VerifyTest() {
    tree_.AddFile(u"good.bin", DigestsOfAbc.input);
    tree_.AddFile(u"bad.bin", DigestsOfAbc.input);
  }

  // One matching file, one mismatch and one missing file.
  std::u16string AddList(const std::string& more = {}) {
    return tree_.AddFile(u"SHA256SUMS", Line(DigestsOfAbc.sha256, "good.bin") +
                                            Line(DigestsOfDigits.sha256, "bad.bin") +
                                            Line(DigestsOfAbc.sha256, "missing.bin") + more);
  }
  void ExpectVerdicts() {
    window_.WaitUntilIdle();
    EXPECT_EQ(window_.Column(u"Name"), (Texts{u"good.bin", u"bad.bin", u"missing.bin"}));
    EXPECT_EQ(window_.Column(u"Status"), (Texts{u"OK (SHA-256)", u"FAILED", u"Missing"}));
    EXPECT_TRUE(WaitFor([&] {
      return window_.Text(IDC_RESULT) == u"Not all files match: 1 OK, 1 FAILED, 1 missing.";
    })) << swr::WideToUtf8(window_.Text(IDC_RESULT));
  }

  TempTree tree_;
  RunningWindow window_;
};

TEST_F(VerifyTest, TheCommandAsksForChecksumFiles) {
  const std::u16string list = AddList();
  window_.PostCommand(ID_VERIFY_FILE);
  const ProgramDialog dialog(window_, u"Verify Checksum File");
  EXPECT_EQ(dialog.FileTypes(), (Texts{u"Checksum files", u"All files"}));
  dialog.SetFileName(list);
  dialog.Press(IDOK);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 3; }));
  ExpectVerdicts();
  EXPECT_FALSE(window_.IsShown(IDC_BANNER));
  EXPECT_EQ(window_.Text(IDC_DETAILS), u"3 files. Select one to see its details.");
}

TEST_F(VerifyTest, SeveralFilesAreVerifiedInTurn) {
  const std::u16string md5 = tree_.AddFile(u"a.md5", Line(DigestsOfAbc.md5, "good.bin"));
  const std::u16string sha1 = tree_.AddFile(u"b.sha1", Line(DigestsOfAbc.sha1, "bad.bin"));
  window_.PostCommand(ID_VERIFY_FILE);
  const ProgramDialog dialog(window_, u"Verify Checksum File");
  dialog.SetFileName(u'"' + md5 + u"\" \"" + sha1 + u'"');
  dialog.Press(IDOK);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 2; }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Column(u"Status"), (Texts{u"OK (MD5)", u"OK (SHA-1)"}));
  EXPECT_TRUE(WaitFor([&] { return window_.Text(IDC_RESULT) == u"All 2 files are OK."; }));
}

TEST_F(VerifyTest, ADroppedChecksumFileIsOffered) {
  window_.Drop({AddList("rubbish\n")});
  ASSERT_TRUE(window_.IsShown(IDC_BANNER));
  EXPECT_EQ(window_.Text(IDC_BANNER), OfferMarkup);
  const Rect banner = window_.Place(IDC_BANNER);
  const int gap = (3 * window_.Dpi() + 48) / 96;  // rounded
  EXPECT_TRUE(WaitFor([&] { return window_.Place(IDC_LIST).top == banner.bottom + gap; }));
  window_.FollowBannerLink(AcceptLink);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 3; }));
  ExpectVerdicts();
  EXPECT_EQ(window_.Text(IDC_BANNER),
            u"1 line of the checksum file aren't checksums and were skipped (first: line 4).    "
            u"<a id=\"x\">Dismiss</a>");
  window_.FollowBannerLink(DismissLink);
  ASSERT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_BANNER); }));
  EXPECT_TRUE(WaitFor([&] { return window_.Place(IDC_LIST).top == banner.top; }));
  EXPECT_EQ(window_.RowCount(), 3);
}

TEST_F(VerifyTest, TheOfferCanBeDismissed) {
  window_.Drop({AddList()});
  window_.FollowBannerLink(DismissLink);
  ASSERT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_BANNER); }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Column(u"Name"), Texts{u"SHA256SUMS"});
  EXPECT_EQ(window_.Column(u"Status"), Texts{u"Done"});
}

TEST_F(VerifyTest, TheKeyboardActivatesTheFirstLink) {
  window_.Drop({AddList()});
  window_.FocusOn(IDC_BANNER);
  constexpr int returnKey = 0x0D;
  window_.PressKey(IDC_BANNER, returnKey);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 3; }));
  ExpectVerdicts();
}

TEST_F(VerifyTest, RowsHaveTheColourOfTheirVerdict) {
  window_.Drop({AddList()});
  window_.FollowBannerLink(AcceptLink);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 3; }));
  ExpectVerdicts();
  constexpr uint32_t green = 0xDEF4DE;
  constexpr uint32_t red = 0xFADEDE;
  EXPECT_TRUE(WaitFor([&] { return window_.RowBackground(0) == green; }))
      << std::hex << window_.RowBackground(0);
  EXPECT_TRUE(WaitFor([&] { return window_.RowBackground(1) == red; }))
      << std::hex << window_.RowBackground(1);
  EXPECT_TRUE(WaitFor([&] { return window_.RowBackground(2) == red; }))
      << std::hex << window_.RowBackground(2);
}

TEST_F(VerifyTest, DetailsShowWhatIsExpected) {
  window_.Drop({AddList()});
  window_.FollowBannerLink(AcceptLink);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 3; }));
  window_.WaitUntilIdle();
  window_.SelectOnly({2});
  EXPECT_EQ(window_.Text(IDC_DETAILS),
            u"missing.bin\r\nFolder:\t" + tree_.Root() + u"\r\nError:\t" + swr::FormatErrorText(2) +
                u".\r\nExpected:\t" + std::u16string(DigestsOfAbc.sha256) +
                u" (SHA256SUMS, line 3)");
  window_.SelectOnly({1});
  EXPECT_TRUE(window_.Text(IDC_DETAILS)
                  .ends_with(u"\r\nExpected:\t" + std::u16string(DigestsOfDigits.sha256) +
                             u" (SHA256SUMS, line 2)"));
}

TEST_F(VerifyTest, AFileThatCantBeReadIsReported) {
  const std::u16string list = AddList();
  window_.Drop({list});
  window_.WaitUntilIdle();
  swr::testing::RemoveFile(list);
  window_.FollowBannerLink(AcceptLink);
  const ProgramDialog message(window_, u"Sumwright");
  EXPECT_EQ(message.Instruction(), u"The checksum file can't be read.");
  EXPECT_EQ(message.Content(), list + u"\n\n" + swr::FormatErrorText(2) + u".");
  message.Press(IDOK);
  EXPECT_EQ(window_.RowCount(), 0);
}

TEST_F(VerifyTest, AFileWithoutChecksumsNeverPasses) {
  for (const char* text : {"", "\n\n", "rubbish\nmore rubbish\n", "# only a comment\n"}) {
    SCOPED_TRACE(text);
    window_.Command(ID_CLEAR_LIST);
    const std::u16string list = tree_.AddFile(u"list.md5");
    swr::testing::WriteBytes(list, text);
    window_.Drop({list});
    window_.FollowBannerLink(AcceptLink);
    const ProgramDialog message(window_, u"Sumwright");
    EXPECT_EQ(message.Instruction(), u"No checksums were found in this file.");
    EXPECT_EQ(message.Content(),
              list +
                  u"\n\nChecksum files have lines like \"<hash>  <file name>\" or \"SHA256 (<file "
                  u"name>) = <hash>\".");
    message.Press(IDOK);
    EXPECT_EQ(window_.Text(IDC_RESULT), u"");
    EXPECT_FALSE(window_.IsShown(IDC_BANNER));
  }
}

}  // namespace
}  // namespace app::testing
