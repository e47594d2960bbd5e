#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::testing::TempTree;

const std::u16string Md5OfAbc = u"900150983cd24fb0d6963f7d28e17f72";
const std::u16string Offer =
    u"This looks like a checksum file. <a id=\"a\">Verify the files it lists</a>    "
    u"<a id=\"x\">Dismiss</a>";

constexpr BannerKind AllKinds[] = {BannerKind::Clipboard, BannerKind::ChecksumFileOffer,
                                   BannerKind::StaleExplorer, BannerKind::SkippedLines};

TEST(BannerKindTest, HasItsNumbers) {
  EXPECT_EQ(static_cast<int>(BannerKind::None), 0);
  EXPECT_EQ(static_cast<int>(BannerKind::Clipboard), 1);
  EXPECT_EQ(static_cast<int>(BannerKind::ChecksumFileOffer), 2);
  EXPECT_EQ(static_cast<int>(BannerKind::StaleExplorer), 3);
  EXPECT_EQ(static_cast<int>(BannerKind::SkippedLines), 4);
}

TEST(ShowBannerTest, KeepsKindAndPayloadUntilItIsHidden) {
  FakeWindow window;
  window.main.ShowBanner(BannerKind::ChecksumFileOffer, u"words", u"payload");
  EXPECT_EQ(window.view.banner, u"words");
  EXPECT_EQ(window.main.bannerKind, BannerKind::ChecksumFileOffer);
  EXPECT_EQ(window.main.bannerPayload, u"payload");
  window.main.HideBanner();
  EXPECT_FALSE(window.view.banner);
  EXPECT_EQ(window.main.bannerKind, BannerKind::None);
  EXPECT_EQ(window.main.bannerPayload, u"");
}

TEST(ShowBannerTest, HidingNothingLeavesTheScreenAlone) {
  FakeWindow window;
  window.view.banner = u"untouched";
  window.main.HideBanner();
  EXPECT_EQ(window.view.banner, u"untouched");
}

TEST(ShowBannerTest, ANewOneReplacesTheOld) {
  for (const BannerKind before : AllKinds) {
    for (const BannerKind after :
         {BannerKind::ChecksumFileOffer, BannerKind::StaleExplorer, BannerKind::SkippedLines}) {
      FakeWindow window;
      window.main.ShowBanner(before, u"old", u"old payload");
      window.main.ShowBanner(after, u"new", u"new payload");
      EXPECT_EQ(window.view.banner, u"new");
      EXPECT_EQ(window.main.bannerKind, after);
      EXPECT_EQ(window.main.bannerPayload, u"new payload");
      window.main.HideBanner();
      EXPECT_FALSE(window.view.banner) << "the old one does not come back";
    }
  }
}

// ---- The offer of a file that looks like a checksum file.

TEST(ChecksumFileOfferTest, ComesForOneNewFileOfSuchAName) {
  struct Case {
    const char* description;
    std::vector<std::u16string> listed;  // added before, below the tree
    std::vector<std::u16string> added;
    bool offered;
  };
  const Case cases[] = {
      {"one checksum file", {}, {u"SHA256SUMS"}, true},
      {"by its ending", {}, {u"a.bin.md5"}, true},
      {"that is missing", {}, {u"gone.sha256"}, true},
      {"another file", {}, {u"a.bin"}, false},
      {"two files, one of them such", {}, {u"SHA256SUMS", u"a.bin"}, false},
      {"two of them", {}, {u"SHA256SUMS", u"a.bin.md5"}, false},
      {"a folder that holds one", {}, {u"sub"}, false},
      {"one that was there already", {u"SHA256SUMS"}, {u"SHA256SUMS"}, false},
      {"one beside others that were there", {u"a.bin"}, {u"SHA256SUMS"}, true},
  };
  TempTree tree;
  for (const char16_t* name : {u"SHA256SUMS", u"a.bin.md5", u"a.bin", u"sub/list.sha256"}) {
    tree.AddFile(name, "x");
  }
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    const auto paths = [&](const std::vector<std::u16string>& names) {
      std::vector<std::u16string> full;
      for (const std::u16string& name : names) full.push_back(tree.Path(name));
      return full;
    };
    if (!test.listed.empty()) window.main.AddPaths(paths(test.listed));
    window.main.HideBanner();
    window.main.AddPaths(paths(test.added));
    if (test.offered) {
      EXPECT_EQ(window.view.banner, Offer);
      EXPECT_EQ(window.main.bannerKind, BannerKind::ChecksumFileOffer);
      EXPECT_EQ(window.main.bannerPayload, tree.Path(test.added.front()));
    } else {
      EXPECT_FALSE(window.view.banner);
    }
  }
}

// A checksum file, dropped on the window.
struct OfferedList {
  explicit OfferedList(std::string_view text = "900150983cd24fb0d6963f7d28e17f72  a.bin\n")
      : list(tree.AddFile(u"list.md5", text)) {
    tree.AddFile(u"a.bin", "abc");
    window.main.AddPaths({list});
  }
  std::vector<std::u16string> Names() const {
    std::vector<std::u16string> names;
    for (const auto& row : window.main.rows) names.push_back(row->name);
    return names;
  }

  TempTree tree;
  std::u16string list;
  FakeWindow window;
};

using TextList = std::vector<std::u16string>;

TEST(ChecksumFileOfferTest, FollowingItPutsTheListedFilesInPlaceOfTheList) {
  OfferedList offered;
  const uint64_t listId = offered.window.main.rows[0]->id;
  offered.window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
  EXPECT_EQ(offered.window.queue.removed, std::vector<uint64_t>{listId});
  EXPECT_EQ(offered.window.main.FindRow(listId), nullptr);
  EXPECT_EQ(offered.window.view.rowCount, 1u);
  EXPECT_TRUE(offered.window.view.selected.empty());
  EXPECT_FALSE(offered.window.view.banner);
  EXPECT_EQ(offered.window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  offered.window.HashQueuedFiles();
  EXPECT_EQ(offered.window.Result(), (ResultLine{u"The file is OK.", ResultKind::Good}));
}

TEST(ChecksumFileOfferTest, OnlyTheFirstPlainRowOfThePathGoes) {
  OfferedList offered;
  FakeWindow& window = offered.window;
  // Around the row itself: the same file as a listed one, and again as a plain one.
  ListRow& listed = window.AddRow(offered.list);
  Expect(listed, FilledBytes(16, 1), {AlgoId::Md5});
  listed.name = u"listed";
  std::swap(window.main.rows[0], window.main.rows[1]);
  window.AddRow(offered.list).name = u"second";
  window.main.RebuildRowIndex();
  window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.Names(), (TextList{u"listed", u"second", u"a.bin"}));
}

TEST(ChecksumFileOfferTest, ARowOfThePathInOtherLettersIsTheOne) {
  OfferedList offered;
  for (char16_t& unit : offered.window.main.rows[0]->path) {
    if (unit == u'm') unit = u'M';
  }
  offered.window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
}

TEST(ChecksumFileOfferTest, StillHoldsWhenTheRowIsGone) {
  OfferedList offered;
  offered.window.main.RemoveRows(offered.window.main.IdsOf({0}));
  EXPECT_EQ(offered.window.view.banner, Offer);
  offered.window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
}

TEST(ChecksumFileOfferTest, AListWithoutChecksumsIsToldAndItsRowIsGoneAllTheSame) {
  OfferedList offered("rubbish\n");
  bool bannerStood = true;
  offered.window.desktop.whileMessageShows = [&] {
    bannerStood = offered.window.view.banner.has_value();
  };
  offered.window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.window.desktop.messages,
            (std::vector<TaskDialogSpec>{MessageDialog(
                TaskDialogIcon::Warning, u"No checksums were found in this file.",
                offered.list + u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                               u"\"SHA256 (<file name>) = <hash>\".")}));
  EXPECT_FALSE(bannerStood) << "the banner goes first";
  EXPECT_EQ(offered.window.view.statusText, u"") << "it counts the row that is gone";
  EXPECT_EQ(offered.window.view.details, u"");
  EXPECT_TRUE(offered.window.main.rows.empty());
  EXPECT_EQ(offered.window.view.rowCount, 0u);
}

TEST(ChecksumFileOfferTest, SkippedLinesTakeItsPlace) {
  OfferedList offered("rubbish\n900150983cd24fb0d6963f7d28e17f72  a.bin\n");
  offered.window.main.OnBannerLink(u"a");
  EXPECT_EQ(offered.window.view.banner,
            u"1 line of the checksum file aren't checksums and were skipped (first: line 1).    "
            u"<a id=\"x\">Dismiss</a>");
  offered.window.main.OnBannerLink(u"x");
  EXPECT_FALSE(offered.window.view.banner);
}

TEST(ChecksumFileOfferTest, DismissingItChangesNothingElse) {
  OfferedList offered;
  offered.window.main.OnBannerLink(u"x");
  EXPECT_FALSE(offered.window.view.banner);
  EXPECT_EQ(offered.Names(), TextList{u"list.md5"});
  EXPECT_TRUE(offered.window.queue.removed.empty());
  EXPECT_EQ(offered.window.view.selected, std::vector<size_t>{0});
}

// ---- Links of the others.

TEST(OnBannerLinkTest, CompareFillsTheBox) {
  for (const char16_t* link : {u"a", u"r", u""}) {
    FakeWindow window;
    AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, 0xAA}}});
    const std::u16string hash = FilledHex(16, 0xAA);
    window.main.ShowBanner(BannerKind::Clipboard, u"offer", u"\u200B " + hash + u"\r\n");
    window.main.OnBannerLink(link);
    EXPECT_EQ(window.view.expectedText, hash);
    EXPECT_EQ(window.Result(),
              (ResultLine{u"Match. The MD5 of a is the expected hash.", ResultKind::Good}));
    EXPECT_FALSE(window.view.banner);
  }
}

TEST(OnBannerLinkTest, DismissLeavesTheBoxAlone) {
  for (const BannerKind kind : AllKinds) {
    FakeWindow window;
    window.view.expectedText = u"before";
    window.main.ShowBanner(kind, u"offer", Md5OfAbc);
    window.main.OnBannerLink(u"x");
    EXPECT_EQ(window.view.expectedText, u"before");
    EXPECT_FALSE(window.view.banner);
    EXPECT_EQ(window.main.bannerKind, BannerKind::None);
    EXPECT_TRUE(window.main.rows.empty());
    EXPECT_TRUE(window.desktop.messages.empty());
  }
}

TEST(OnBannerLinkTest, AnyLinkOfSkippedLinesOnlyHides) {
  FakeWindow window;
  window.main.ShowBanner(BannerKind::SkippedLines, u"words", u"");
  window.main.OnBannerLink(u"a");
  EXPECT_FALSE(window.view.banner);
  EXPECT_TRUE(window.desktop.messages.empty());
}

TEST(OnBannerLinkTest, ALinkOfABannerThatIsGoneDoesNothing) {
  FakeWindow window;
  window.main.OnBannerLink(u"a");
  window.main.OnBannerLink(u"x");
  EXPECT_TRUE(window.desktop.messages.empty());
  EXPECT_EQ(window.view.expectedText, u"");
}

// ---- What else hides a banner.

struct HidingCase {
  const char* description;
  BannerKind kind;
  std::function<void(FakeWindow&)> action;
  bool stays;
};

TEST(BannerTest, WhatHidesIt) {
  const auto edit = [](FakeWindow& window) { window.view.SetExpectedText(u"x"); };
  const auto paste = [](FakeWindow& window) {
    window.desktop.Copy(u"text");
    window.main.OnCommand(IDC_PASTE);
  };
  const auto pasteNothing = [](FakeWindow& window) { window.main.OnCommand(IDC_PASTE); };
  const auto clear = [](FakeWindow& window) { window.main.OnCommand(ID_CLEAR_LIST); };
  const auto remove = [](FakeWindow& window) { window.main.OnCommand(ID_REMOVE); };
  const auto cancel = [](FakeWindow& window) { window.main.OnCommand(IDC_CANCEL); };
  const HidingCase cases[] = {
      {"typing hides the clipboard's", BannerKind::Clipboard, edit, false},
      {"typing keeps the offer", BannerKind::ChecksumFileOffer, edit, true},
      {"typing keeps the repair", BannerKind::StaleExplorer, edit, true},
      {"typing keeps the note", BannerKind::SkippedLines, edit, true},
      {"pasting hides the clipboard's", BannerKind::Clipboard, paste, false},
      {"pasting hides the offer", BannerKind::ChecksumFileOffer, paste, false},
      {"pasting hides the repair", BannerKind::StaleExplorer, paste, false},
      {"pasting hides the note", BannerKind::SkippedLines, paste, false},
      {"pasting nothing keeps the clipboard's", BannerKind::Clipboard, pasteNothing, true},
      {"pasting nothing keeps the repair", BannerKind::StaleExplorer, pasteNothing, true},
      {"pasting nothing keeps the note", BannerKind::SkippedLines, pasteNothing, true},
      {"clearing hides the clipboard's", BannerKind::Clipboard, clear, false},
      {"clearing hides the offer", BannerKind::ChecksumFileOffer, clear, false},
      {"clearing hides the repair", BannerKind::StaleExplorer, clear, false},
      {"clearing hides the note", BannerKind::SkippedLines, clear, false},
      {"removing keeps the clipboard's", BannerKind::Clipboard, remove, true},
      {"removing keeps the offer", BannerKind::ChecksumFileOffer, remove, true},
      {"removing keeps the repair", BannerKind::StaleExplorer, remove, true},
      {"removing keeps the note", BannerKind::SkippedLines, remove, true},
      {"cancelling keeps the clipboard's", BannerKind::Clipboard, cancel, true},
      {"cancelling keeps the offer", BannerKind::ChecksumFileOffer, cancel, true},
      {"cancelling keeps the repair", BannerKind::StaleExplorer, cancel, true},
      {"cancelling keeps the note", BannerKind::SkippedLines, cancel, true},
  };
  for (const HidingCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    AddRow(window, {.name = u"a"});
    window.view.selected = {0};
    window.main.ShowBanner(test.kind, u"words", u"payload");
    test.action(window);
    EXPECT_EQ(window.view.banner.has_value(), test.stays);
    EXPECT_EQ(window.main.bannerKind, test.stays ? test.kind : BannerKind::None);
    EXPECT_EQ(window.main.bannerPayload, test.stays ? u"payload" : u"");
  }
}

}  // namespace
}  // namespace app::testing
