// Menus, pickers and the file manager run message loops of their own, during which a second start
// can hand over files, rows can be removed and the list can be sorted. The command then acts on the
// rows that were selected when the menu or the picker opened.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/text_file.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint8_t Fill = 0xAB;

// Two finished rows, "a.bin" and "b.bin", and a late one that arrives while something is open.
struct ChoosingWindow : FakeWindow {
  ChoosingWindow() {
    algorithms.Select(MaskOf(AlgoId::Sha256));
    for (const char16_t* name : {u"a.bin", u"b.bin"}) AddDoneRow(name);
  }

  void AddDoneRow(const std::u16string& name) {
    Row& row = AddRow(RowSetup{.name = name, .digests = {{AlgoId::Sha256, Fill}}});
    row.path = u"/d/" + name;
    Recount();
  }
  // As when another start hands over a file: only its row is selected.
  void TakeLateFile() {
    AddDoneRow(u"late.bin");
    view.selected = {rows.Size() - 1};
  }
  // Removes the row with this name, and with it the selection.
  void RemoveRowNamed(const std::u16string& name) {
    for (size_t i = 0; i < rows.Size(); ++i) {
      if (rows[i].Name() != name) continue;
      view.selected = {i};
      commands.Run(ID_REMOVE);
      return;
    }
  }

  // Opens the list's menu for these rows and chooses the command.
  void ChooseFor(const std::vector<size_t>& indexes, const ListMenuChoice& choice) {
    view.selected = indexes;
    view.listMenuChoice = choice;
    listMenu.Show(std::nullopt);
  }
  void ChooseFor(const std::vector<size_t>& indexes, uint32_t command) {
    ChooseFor(indexes, ListMenuChoice{.command = command});
  }
  Texts Names() const {
    Texts names;
    for (const Row& row : rows) names.push_back(row.Name());
    return names;
  }

 private:
  Row& AddRow(const RowSetup& setup) { return app::testing::AddRow(*this, setup); }
};

// ---- The list's menu, while files are handed over.

TEST(SelectionSnapshotTest, RemoveActsOnTheRowsOfTheMenu) {
  ChoosingWindow window;
  window.view.whileMenuShows = [&] { window.TakeLateFile(); };
  window.ChooseFor({0}, ID_CTX_REMOVE);
  EXPECT_EQ(window.Names(), (Texts{u"b.bin", u"late.bin"}));
}

TEST(SelectionSnapshotTest, CopyingActsOnTheRowsOfTheMenu) {
  const std::u16string hex = FilledHex(32, Fill);
  struct Case {
    uint32_t command;
    std::u16string text;
  };
  const Case cases[] = {
      {ID_CTX_COPY_PATH, u"/d/a.bin"},
      {ID_CTX_COPY_LINE, hex + u"  a.bin\r\n"},
      {ID_CTX_COPY_ALL, u"SHA256 (a.bin) = " + hex + u"\r\n"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.command);
    ChoosingWindow window;
    window.view.whileMenuShows = [&] { window.TakeLateFile(); };
    window.ChooseFor({0}, test.command);
    EXPECT_EQ(window.desktop.clipboard, test.text);
  }
}

TEST(SelectionSnapshotTest, CompareActsOnTheRowsOfTheMenu) {
  ChoosingWindow window;
  window.view.whileMenuShows = [&] { window.TakeLateFile(); };
  window.ChooseFor({0, 1}, ID_CTX_COMPARE);
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"The two files are identical.");
  EXPECT_TRUE(window.desktop.messages[0].content.starts_with(u"a.bin\nb.bin\n"));
}

TEST(SelectionSnapshotTest, TheLookupActsOnTheRowOfTheMenu) {
  ChoosingWindow window;
  PutDigest(window.RowAt(0), {AlgoId::Sha256, 0x11});
  window.view.whileMenuShows = [&] { window.TakeLateFile(); };
  window.ChooseFor({0}, ID_CTX_VIRUSTOTAL);
  EXPECT_EQ(window.desktop.openedAddresses,
            Texts{u"https://www.virustotal.com/gui/file/" + FilledHex(32, 0x11)});
}

TEST(SelectionSnapshotTest, OpenFolderActsOnTheRowOfTheMenu) {
  ChoosingWindow window;
  window.view.whileMenuShows = [&] { window.TakeLateFile(); };
  window.ChooseFor({0}, ID_CTX_OPEN_FOLDER);
  ASSERT_EQ(window.desktop.shownInFolder.size(), 1u);
  EXPECT_EQ(window.desktop.shownInFolder[0].first, u"/d/a.bin");
}

TEST(SelectionSnapshotTest, OpenFolderForSeveralRowsDoesNothingIfOneIsSelectedLater) {
  ChoosingWindow window;
  window.view.whileMenuShows = [&] { window.TakeLateFile(); };
  window.ChooseFor({0, 1}, ID_CTX_OPEN_FOLDER);
  EXPECT_TRUE(window.desktop.shownInFolder.empty());
}

TEST(SelectionSnapshotTest, CopyingADigestActsOnTheRowOfTheMenuAfterASort) {
  ChoosingWindow window;
  PutDigest(window.RowAt(0), {AlgoId::Sha256, 0x11});
  window.view.whileMenuShows = [&] {
    window.sorting.SortBy(0);
    window.sorting.SortBy(0);
    ASSERT_EQ(window.Names(), (Texts{u"b.bin", u"a.bin"}));
  };
  window.ChooseFor({0}, ListMenuChoice{.digest = AlgoId::Sha256});
  EXPECT_EQ(window.desktop.clipboard, FilledHex(32, 0x11));
}

// ---- Removed rows.

TEST(SelectionSnapshotTest, RemovedRowsAreSkipped) {
  struct Case {
    const char* description;
    std::vector<size_t> rows;
    ListMenuChoice choice;
    std::optional<std::u16string> copied;
    Texts left = {u"b.bin"};
  };
  const Case cases[] = {
      {"the digest", {0}, {.digest = AlgoId::Sha256}, std::nullopt},
      {"the path", {0}, {.command = ID_CTX_COPY_PATH}, std::nullopt},
      {"the line", {0}, {.command = ID_CTX_COPY_LINE}, std::nullopt},
      {"all hashes", {0}, {.command = ID_CTX_COPY_ALL}, std::nullopt},
      {"one path of two", {0, 1}, {.command = ID_CTX_COPY_PATH}, u"/d/b.bin"},
      {"the lookup", {0}, {.command = ID_CTX_VIRUSTOTAL}, std::nullopt},
      {"the folder", {0}, {.command = ID_CTX_OPEN_FOLDER}, std::nullopt},
      {"the comparison", {0, 1}, {.command = ID_CTX_COMPARE}, std::nullopt},
      {"the removal", {0}, {.command = ID_CTX_REMOVE}, std::nullopt},
      {"the removal of two", {0, 1}, {.command = ID_CTX_REMOVE}, std::nullopt, {}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    ChoosingWindow window;
    window.view.whileMenuShows = [&] { window.RemoveRowNamed(u"a.bin"); };
    window.ChooseFor(test.rows, test.choice);
    EXPECT_EQ(window.Names(), test.left);
    EXPECT_EQ(window.desktop.clipboard, test.copied);
    EXPECT_TRUE(window.desktop.openedAddresses.empty());
    EXPECT_TRUE(window.desktop.shownInFolder.empty());
    EXPECT_TRUE(window.desktop.messages.empty());
    EXPECT_FALSE(window.comparison.IsWaiting());
  }
}

TEST(SelectionSnapshotTest, ARowMayBeRemovedWhileItsFolderOpens) {
  ChoosingWindow window;
  window.desktop.whileFolderOpens = [&] { window.RemoveRowNamed(u"a.bin"); };
  window.view.selected = {0};
  window.commands.Run(IDC_OPEN_FOLDER);
  ASSERT_EQ(window.desktop.shownInFolder.size(), 1u);
  EXPECT_EQ(window.desktop.shownInFolder[0].first, u"/d/a.bin");
  EXPECT_EQ(window.desktop.shownInFolder[0].second, u"/d");
  EXPECT_EQ(window.Names(), Texts{u"b.bin"});
}

// ---- Saving.

struct SavingWindow : ChoosingWindow {
  SavingWindow() {
    AddDoneRow(u"c.bin");
    desktop.saveTarget = SaveTarget{.path = tree.Path(u"saved.sha256"), .filter = 0};
  }
  std::u16string Saved() const {
    return swr::ReadTextFile(tree.Path(u"saved.sha256"), nullptr).value_or(u"(no file)");
  }

  TempTree tree;
};

std::u16string LineOf(const std::u16string& name) {
  return FilledHex(32, Fill) + u"  /d/" + name + u"\n";
}

TEST(SelectionSnapshotTest, SavingActsOnTheRowsSelectedBeforeThePicker) {
  SavingWindow window;
  window.view.selected = {0, 1};
  window.desktop.whilePickerShows = [&] { window.TakeLateFile(); };
  window.commands.Run(ID_SAVE_CHECKSUMS);
  EXPECT_EQ(window.Saved(), LineOf(u"a.bin") + LineOf(u"b.bin"));
}

TEST(SelectionSnapshotTest, SavingSkipsRemovedRows) {
  SavingWindow window;
  window.view.selected = {0, 1};
  window.desktop.whilePickerShows = [&] { window.RemoveRowNamed(u"a.bin"); };
  window.commands.Run(ID_SAVE_CHECKSUMS);
  EXPECT_EQ(window.Saved(), LineOf(u"b.bin"));
}

TEST(SelectionSnapshotTest, WithoutRowsTheFileIsNotWritten) {
  SavingWindow window;
  window.tree.AddFile(u"saved.sha256", "old");
  window.desktop.whilePickerShows = [&] { window.commands.Run(ID_CLEAR_LIST); };
  window.commands.Run(ID_SAVE_CHECKSUMS);
  EXPECT_EQ(window.Saved(), u"old");
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"There's nothing to save yet.");
}

// ---- The menu of algorithms.

TEST(SelectionSnapshotTest, TheMenuTogglesTheStateThatItShowed) {
  constexpr swr::AlgoMask md5 = MaskOf(AlgoId::Md5);
  constexpr swr::AlgoMask crc32 = MaskOf(AlgoId::Crc32);
  struct Case {
    const char* description;
    swr::AlgoMask shown;
    swr::AlgoMask meanwhile;
    swr::AlgoMask chosen;
  };
  const Case cases[] = {
      {"nothing changes", md5, md5, md5 | crc32},
      {"it is selected already", md5, md5 | crc32, md5 | crc32},
      {"it is deselected already", md5 | crc32, md5, md5},
      {"another algorithm changes", md5 | crc32, crc32 | MaskOf(AlgoId::Sha1),
       MaskOf(AlgoId::Sha1)},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.algorithms.Select(test.shown);
    window.view.algoToChoose = AlgoId::Crc32;
    window.view.whileMenuShows = [&] { window.algorithms.Select(test.meanwhile); };
    window.commands.Run(IDC_ALGO_MORE);
    EXPECT_EQ(window.options.algorithms, test.chosen);
  }
}

}  // namespace
}  // namespace app::testing
