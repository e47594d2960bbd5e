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

TEST(BannerKindTest, Numbers) {
  EXPECT_EQ(static_cast<int>(BannerKind::None), 0);
  EXPECT_EQ(static_cast<int>(BannerKind::Clipboard), 1);
  EXPECT_EQ(static_cast<int>(BannerKind::ChecksumFileOffer), 2);
  EXPECT_EQ(static_cast<int>(BannerKind::StaleExplorer), 3);
  EXPECT_EQ(static_cast<int>(BannerKind::SkippedLines), 4);
}

TEST(ShowBannerTest, KeepsKindAndPayloadUntilItIsHidden) {
  FakeWindow window;
  window.banners.Show(BannerKind::ChecksumFileOffer, u"words", u"payload");
  EXPECT_EQ(window.view.banner, u"words");
  EXPECT_EQ(window.banners.Kind(), BannerKind::ChecksumFileOffer);
  EXPECT_EQ(window.banners.Payload(), u"payload");
  window.banners.Hide();
  EXPECT_FALSE(window.view.banner);
  EXPECT_EQ(window.banners.Kind(), BannerKind::None);
  EXPECT_EQ(window.banners.Payload(), u"");
}

TEST(ShowBannerTest, HidingNoBannerDoesNothing) {
  FakeWindow window;
  window.view.banner = u"untouched";
  window.banners.Hide();
  EXPECT_EQ(window.view.banner, u"untouched");
}

TEST(ShowBannerTest, ANewBannerReplacesTheOld) {
  for (const BannerKind before : AllKinds) {
    for (const BannerKind after :
         {BannerKind::ChecksumFileOffer, BannerKind::StaleExplorer, BannerKind::SkippedLines}) {
      FakeWindow window;
      window.banners.Show(before, u"old", u"old payload");
      window.banners.Show(after, u"new", u"new payload");
      EXPECT_EQ(window.view.banner, u"new");
      EXPECT_EQ(window.banners.Kind(), after);
      EXPECT_EQ(window.banners.Payload(), u"new payload");
      window.banners.Hide();
      EXPECT_FALSE(window.view.banner) << "the old one does not come back";
    }
  }
}

// ---- The offer of a file that looks like a checksum file.

TEST(ChecksumFileOfferTest, IsMadeForASingleNewFileWithSuchAName) {
  struct Case {
    const char* description;
    std::vector<std::u16string> listed;  // added before, below the tree
    std::vector<std::u16string> added;
    bool offered;
  };
  const Case cases[] = {
      {"one checksum file", {}, {u"SHA256SUMS"}, true},
      {"recognised by its extension", {}, {u"a.bin.md5"}, true},
      {"a missing one", {}, {u"gone.sha256"}, true},
      {"a file of another kind", {}, {u"a.bin"}, false},
      {"two files, one of them a checksum file", {}, {u"SHA256SUMS", u"a.bin"}, false},
      {"two checksum files", {}, {u"SHA256SUMS", u"a.bin.md5"}, false},
      {"a folder that contains one", {}, {u"sub"}, false},
      {"one that is in the list already", {u"SHA256SUMS"}, {u"SHA256SUMS"}, false},
      {"one, with other rows in the list", {u"a.bin"}, {u"SHA256SUMS"}, true},
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
    if (!test.listed.empty()) window.adding.AddPaths(paths(test.listed));
    window.banners.Hide();
    window.adding.AddPaths(paths(test.added));
    if (test.offered) {
      EXPECT_EQ(window.view.banner, Offer);
      EXPECT_EQ(window.banners.Kind(), BannerKind::ChecksumFileOffer);
      EXPECT_EQ(window.banners.Payload(), tree.Path(test.added.front()));
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
    window.adding.AddPaths({list});
  }
  std::vector<std::u16string> Names() const {
    std::vector<std::u16string> names;
    for (const Row& row : window.rows) names.push_back(row.Name());
    return names;
  }

  TempTree tree;
  std::u16string list;
  FakeWindow window;
};

using TextList = std::vector<std::u16string>;

TEST(ChecksumFileOfferTest, FollowingItReplacesTheListWithTheListedFiles) {
  OfferedList offered;
  const uint64_t listId = offered.window.rows[0].id;
  offered.window.bannerLinks.Follow(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
  EXPECT_EQ(offered.window.queue.removed, std::vector<uint64_t>{listId});
  EXPECT_EQ(offered.window.rows.Find(listId), nullptr);
  EXPECT_EQ(offered.window.view.rowCount, 1u);
  EXPECT_TRUE(offered.window.view.selected.empty());
  EXPECT_FALSE(offered.window.view.banner);
  EXPECT_EQ(offered.window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  offered.window.HashQueuedFiles();
  EXPECT_EQ(offered.window.Result(), (ResultLine{u"The file is OK.", ResultKind::Good}));
}

TEST(ChecksumFileOfferTest, OnlyTheFirstPlainRowOfThePathIsRemoved) {
  OfferedList offered;
  FakeWindow& window = offered.window;
  // Besides the row itself: the same file from a checksum file, and again as a plain row.
  Row& listed = window.AddRow(offered.list);
  Expect(listed, FilledBytes(16, 1), {AlgoId::Md5});
  const uint64_t listedId = listed.id;
  window.rows.Reorder(std::vector<size_t>{1, 0});
  const uint64_t secondId = window.AddRow(offered.list).id;
  window.bannerLinks.Follow(u"a");
  ASSERT_EQ(window.rows.Size(), 3u);
  EXPECT_EQ(window.rows[0].id, listedId);
  EXPECT_EQ(window.rows[1].id, secondId);
  EXPECT_EQ(window.rows[2].Name(), u"a.bin");
}

TEST(ChecksumFileOfferTest, TheRowIsFoundIgnoringCase) {
  OfferedList offered;
  std::u16string path = offered.list;
  for (char16_t& unit : path) {
    if (unit == u'm') unit = u'M';
  }
  offered.window.RemoveRows({0});
  offered.window.AddRow(path);
  offered.window.bannerLinks.Follow(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
}

TEST(ChecksumFileOfferTest, WorksAfterTheRowWasRemoved) {
  OfferedList offered;
  offered.window.RemoveRows({0});
  EXPECT_EQ(offered.window.view.banner, Offer);
  offered.window.bannerLinks.Follow(u"a");
  EXPECT_EQ(offered.Names(), TextList{u"a.bin"});
}

TEST(ChecksumFileOfferTest, AListWithoutChecksumsIsReportedAndItsRowRemoved) {
  OfferedList offered("rubbish\n");
  bool isBannerShown = true;
  offered.window.desktop.whileMessageShows = [&] {
    isBannerShown = offered.window.view.banner.has_value();
  };
  offered.window.bannerLinks.Follow(u"a");
  EXPECT_EQ(offered.window.desktop.messages,
            (std::vector<TaskDialogSpec>{MessageDialog(
                TaskDialogIcon::Warning, u"No checksums were found in this file.",
                offered.list + u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                               u"\"SHA256 (<file name>) = <hash>\".")}));
  EXPECT_FALSE(isBannerShown) << "the banner is hidden first";
  EXPECT_EQ(offered.window.view.statusText, u"") << "the removed row is not counted";
  EXPECT_EQ(offered.window.view.details, u"");
  EXPECT_TRUE(offered.window.rows.IsEmpty());
  EXPECT_EQ(offered.window.view.rowCount, 0u);
}

TEST(ChecksumFileOfferTest, ABannerAboutSkippedLinesReplacesIt) {
  OfferedList offered("rubbish\n900150983cd24fb0d6963f7d28e17f72  a.bin\n");
  offered.window.bannerLinks.Follow(u"a");
  EXPECT_EQ(offered.window.view.banner,
            u"1 line of the checksum file aren't checksums and were skipped (first: line 1).    "
            u"<a id=\"x\">Dismiss</a>");
  offered.window.bannerLinks.Follow(u"x");
  EXPECT_FALSE(offered.window.view.banner);
}

TEST(ChecksumFileOfferTest, DismissingItChangesNothingElse) {
  OfferedList offered;
  offered.window.bannerLinks.Follow(u"x");
  EXPECT_FALSE(offered.window.view.banner);
  EXPECT_EQ(offered.Names(), TextList{u"list.md5"});
  EXPECT_TRUE(offered.window.queue.removed.empty());
  EXPECT_EQ(offered.window.view.selected, std::vector<size_t>{0});
}

// ---- Links of the other banners.

TEST(BannerLinksTest, CompareFillsTheBox) {
  for (const char16_t* link : {u"a", u"r", u""}) {
    FakeWindow window;
    AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, 0xAA}}});
    const std::u16string hash = FilledHex(16, 0xAA);
    window.banners.Show(BannerKind::Clipboard, u"offer", u"\u200B " + hash + u"\r\n");
    window.bannerLinks.Follow(link);
    EXPECT_EQ(window.view.expectedText, hash);
    EXPECT_EQ(window.Result(),
              (ResultLine{u"Match. The MD5 of a is the expected hash.", ResultKind::Good}));
    EXPECT_FALSE(window.view.banner);
  }
}

TEST(BannerLinksTest, DismissLeavesTheBoxAlone) {
  for (const BannerKind kind : AllKinds) {
    FakeWindow window;
    window.view.expectedText = u"before";
    window.banners.Show(kind, u"offer", Md5OfAbc);
    window.bannerLinks.Follow(u"x");
    EXPECT_EQ(window.view.expectedText, u"before");
    EXPECT_FALSE(window.view.banner);
    EXPECT_EQ(window.banners.Kind(), BannerKind::None);
    EXPECT_TRUE(window.rows.IsEmpty());
    EXPECT_TRUE(window.desktop.messages.empty());
  }
}

TEST(BannerLinksTest, AnyLinkOfSkippedLinesOnlyHides) {
  FakeWindow window;
  window.banners.Show(BannerKind::SkippedLines, u"words", u"");
  window.bannerLinks.Follow(u"a");
  EXPECT_FALSE(window.view.banner);
  EXPECT_TRUE(window.desktop.messages.empty());
}

TEST(BannerLinksTest, ALinkOfAHiddenBannerDoesNothing) {
  FakeWindow window;
  window.bannerLinks.Follow(u"a");
  window.bannerLinks.Follow(u"x");
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
    window.commands.Run(IDC_PASTE);
  };
  const auto pasteNothing = [](FakeWindow& window) { window.commands.Run(IDC_PASTE); };
  const auto clear = [](FakeWindow& window) { window.commands.Run(ID_CLEAR_LIST); };
  const auto remove = [](FakeWindow& window) { window.commands.Run(ID_REMOVE); };
  const auto cancel = [](FakeWindow& window) { window.commands.Run(IDC_CANCEL); };
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
    window.banners.Show(test.kind, u"words", u"payload");
    test.action(window);
    EXPECT_EQ(window.view.banner.has_value(), test.stays);
    EXPECT_EQ(window.banners.Kind(), test.stays ? test.kind : BannerKind::None);
    EXPECT_EQ(window.banners.Payload(), test.stays ? u"payload" : u"");
  }
}

}  // namespace
}  // namespace app::testing
