// The list's context menu in the real window, and what its commands put on the clipboard.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr int escapeKey = 0x1B;

class ListMenuTest : public ::testing::Test {
 protected:
  ListMenuTest() {
    window_.Click(IDC_ALGO_SHA1);  // leaves MD5 and SHA-256
    window_.Drop({tree_.AddFile(u"abc.bin", DigestsOfAbc.input),
                  tree_.AddFile(u"digits.bin", DigestsOfDigits.input), tree_.Path(u"missing")});
    window_.WaitUntilIdle();
  }

  std::vector<MenuItem> MenuOf(const std::vector<int>& rows) {
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    const std::vector<MenuItem> items = window_.OpenMenu();
    window_.PressKey(0, escapeKey);
    WaitFor([&] { return window_.OpenMenu().empty(); });
    return items;
  }
  void ExpectCopied(const std::vector<int>& rows, uint32_t entry, const std::u16string& text) {
    CopyText(u"something else");
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    window_.ChooseFromMenu(entry);
    ASSERT_TRUE(WaitFor([&] { return window_.OpenMenu().empty(); }));
    window_.WaitForPostedMessages();
    EXPECT_TRUE(WaitFor([&] { return CopiedText() == text; }, std::chrono::seconds(5)))
        << ::testing::PrintToString(CopiedText()) << " instead of "
        << ::testing::PrintToString(text);
  }

  TempTree tree_;
  RunningWindow window_;
};

TEST_F(ListMenuTest, OffersWhatTheSelectionAllows) {
  const Texts always = {u"Copy &Line (sha256sum format)",
                        u"Copy &All Hashes",
                        u"Copy &Path",
                        u"",
                        u"Look Up on &VirusTotal",
                        u"Co&mpare These Two Files",
                        u"Open Containing &Folder",
                        u"",
                        u"&Remove from List\tDel"};
  struct Case {
    std::vector<int> rows;
    Texts first;
    bool canLookUp;
    bool canCompare;
  };
  const Case cases[] = {
      {{0}, {u"Copy MD5", u"Copy SHA-256", u""}, true, false},
      {{2}, {}, false, false},
      {{0, 1}, {}, false, true},
      {{0, 1, 2}, {}, false, false},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(::testing::PrintToString(test.rows));
    Texts expected = test.first;
    expected.insert(expected.end(), always.begin(), always.end());
    Texts shown;
    for (const MenuItem& item : MenuOf(test.rows)) {
      shown.push_back(item.text);
      if (item.id == 0) continue;
      const bool enabled = item.id == ID_CTX_VIRUSTOTAL ? test.canLookUp
                           : item.id == ID_CTX_COMPARE  ? test.canCompare
                                                        : true;
      EXPECT_EQ(item.isEnabled, enabled) << item.id;
    }
    EXPECT_EQ(shown, expected);
  }
}

TEST_F(ListMenuTest, CopiesTheExactText) {
  const std::u16string md5(DigestsOfAbc.md5);
  const std::u16string sha256(DigestsOfAbc.sha256);
  const std::u16string otherMd5(DigestsOfDigits.md5);
  ExpectCopied({0}, ID_COPY_DIGEST_FIRST + 1, md5);
  ExpectCopied({0}, ID_COPY_DIGEST_FIRST + 3, sha256);
  ExpectCopied({0, 1}, ID_CTX_COPY_LINE, md5 + u"  abc.bin\r\n" + otherMd5 + u"  digits.bin\r\n");
  ExpectCopied({0}, ID_CTX_COPY_ALL,
               u"MD5 (abc.bin) = " + md5 + u"\r\nSHA256 (abc.bin) = " + sha256 + u"\r\n");
  ExpectCopied({0}, ID_CTX_COPY_PATH, tree_.Path(u"abc.bin"));
  ExpectCopied({1, 2}, ID_CTX_COPY_PATH,
               tree_.Path(u"digits.bin") + u"\r\n" + tree_.Path(u"missing") + u"\r\n");
  // A digest that not all rows have is not copied at all.
  ExpectCopied({0, 2}, ID_CTX_COPY_LINE, u"something else");
}

TEST_F(ListMenuTest, TheButtonAndControlCCopyHashes) {
  const std::u16string text = u"MD5: " + std::u16string(DigestsOfAbc.md5) + u"\r\nSHA-256: " +
                              std::u16string(DigestsOfAbc.sha256) + u"\r\n";
  window_.SelectOnly({0});
  CopyText(u"something else");
  window_.Click(IDC_COPY);
  EXPECT_EQ(CopiedText(), text);
  CopyText(u"something else");
  window_.FocusOn(IDC_LIST);
  constexpr int controlKey = 0x11;
  window_.TypeChord({controlKey, 'C'});
  EXPECT_TRUE(WaitFor([&] { return CopiedText() == text; }));
}

TEST_F(ListMenuTest, RemovesTheRows) {
  window_.SelectOnly({0, 2});
  window_.OpenListMenu();
  window_.ChooseFromMenu(ID_CTX_REMOVE);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 1; }));
  EXPECT_EQ(window_.Column(u"Name"), Texts{u"digits.bin"});
}

TEST_F(ListMenuTest, TheButtonsFollowTheSelection) {
  struct Case {
    std::vector<int> rows;
    bool copy, lookUp, openFolder;
  };
  const Case cases[] = {{{}, false, false, false},
                        {{0}, true, true, true},
                        {{2}, true, false, true},
                        {{0, 1}, true, false, false}};
  for (const Case& test : cases) {
    SCOPED_TRACE(::testing::PrintToString(test.rows));
    window_.SelectOnly(test.rows);
    EXPECT_EQ(window_.IsEnabled(IDC_COPY), test.copy);
    EXPECT_EQ(window_.IsEnabled(IDC_VIRUSTOTAL), test.lookUp);
    EXPECT_EQ(window_.IsEnabled(IDC_OPEN_FOLDER), test.openFolder);
  }
}

}  // namespace
}  // namespace app::testing
