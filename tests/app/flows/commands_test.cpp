#include "app/flows/commands.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

// The commands of the resources and the dialog.
const std::set<uint32_t> KnownIds = {
    ID_ADD_FILES,      ID_ADD_FOLDER,     ID_VERIFY_FILE,   ID_SAVE_CHECKSUMS, ID_EXIT,
    ID_COPY_HASHES,    ID_PASTE_EXPECTED, ID_SELECT_ALL,    ID_REMOVE,         ID_CLEAR_LIST,
    ID_HASH_TEXT,      ID_UPPERCASE,      ID_SHOW_LEGACY,   ID_INCLUDE_HIDDEN, ID_CRLF,
    ID_EXPLORER_MENU,  ID_SEND_TO,        ID_HELP_ONLINE,   ID_WEBSITE,        ID_ABOUT,
    ID_PROGRAM_FOLDER, ID_CLI_TOOL,       ID_CTX_COPY_LINE, ID_CTX_COPY_ALL,   ID_CTX_OPEN_FOLDER,
    ID_CTX_REMOVE,     ID_CTX_VIRUSTOTAL, ID_CTX_COMPARE,   ID_CTX_COPY_PATH,  IDC_ALGO_MD5,
    IDC_ALGO_SHA1,     IDC_ALGO_SHA256,   IDC_ALGO_SHA512,  IDC_ALGO_BLAKE3,   IDC_ALGO_MORE,
    IDC_CANCEL,        IDC_PASTE,         IDC_COPY,         IDC_VIRUSTOTAL,    IDC_OPEN_FOLDER};

TEST(CommandsTest, TheTableHasEachCommandOnceWithOneHandler) {
  std::set<uint32_t> ids;
  for (const Command& command : AllCommands()) {
    EXPECT_TRUE(ids.insert(command.id).second) << command.id;
    EXPECT_NE(command.act == nullptr, command.actOn == nullptr) << command.id;
  }
  EXPECT_EQ(ids, KnownIds);
}

TEST(CommandsTest, EachCommandRunsWithAnySelection) {
  for (const Command& command : AllCommands()) {
    for (const size_t selected : {0u, 1u, 2u}) {
      SCOPED_TRACE(std::to_string(command.id) + " on " + std::to_string(selected));
      FakeWindow window;
      window.AddRow(u"a");
      window.AddRow(u"b").status = RowStatus::Failed;
      window.Recount();
      for (size_t i = 0; i < selected; ++i) window.view.selected.push_back(1 - i);
      EXPECT_TRUE(window.commands.Run(command.id));
    }
  }
  EXPECT_FALSE(FakeWindow().commands.Run(4711));
}

TEST(CommandsTest, ARowCommandWorksOnTheGivenRows) {
  FakeWindow window;
  const uint64_t a = window.AddRow(u"a").id;
  window.AddRow(u"b");
  window.view.selected = {1};
  window.commands.RunOn(ID_REMOVE, {a});
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].Path(), u"b");
  window.commands.RunOn(ID_CLEAR_LIST, {});
  EXPECT_TRUE(window.rows.IsEmpty());
}

TEST(CommandsTest, AvailabilityFollowsTheSelection) {
  const std::set<uint32_t> oneReadable = {IDC_VIRUSTOTAL, ID_CTX_VIRUSTOTAL};
  const std::set<uint32_t> one = {IDC_OPEN_FOLDER};
  const std::set<uint32_t> two = {ID_CTX_COMPARE};
  const std::set<uint32_t> any = {IDC_COPY};
  for (const Command& command : AllCommands()) {
    for (const size_t selected : {0u, 1u, 2u, 3u}) {
      for (const bool failed : {false, true}) {
        const CommandState state = {.selectedRows = selected, .singleRowFailed = failed};
        bool expected = true;
        if (oneReadable.contains(command.id)) expected = selected == 1 && !failed;
        if (one.contains(command.id)) expected = selected == 1;
        if (two.contains(command.id)) expected = selected == 2;
        if (any.contains(command.id)) expected = selected > 0;
        EXPECT_EQ(IsCommandAvailable(command.id, state), expected)
            << command.id << " with " << selected << " rows, failed " << failed;
      }
    }
    EXPECT_EQ(
        IsCommandAvailable(command.id, {.selectedRows = 1, .explorerMenuIsMachineWide = true}),
        command.id != ID_EXPLORER_MENU && command.id != ID_CTX_COMPARE)
        << command.id;
  }
  EXPECT_FALSE(IsCommandAvailable(4711, {}));
}

TEST(CommandsTest, PickedFilesAreAddedAndACancelledPickerAddsNothing) {
  struct Case {
    uint32_t id;
    std::u16string title;
  };
  for (const Case& test : {Case{ID_ADD_FILES, u"Add Files"}, Case{ID_ADD_FOLDER, u"Add Folder"}}) {
    SCOPED_TRACE(swr::WideToUtf8(test.title));
    FakeWindow window;
    window.commands.Run(test.id);
    EXPECT_EQ(window.desktop.pickerTitle, test.title);
    EXPECT_EQ(window.desktop.waits, 0);
    window.desktop.picked = {u"no such file"};
    window.commands.Run(test.id);
    EXPECT_EQ(window.rows.Size(), 1u);
  }
}

TEST(CommandsTest, ExitClosesTheWindow) {
  FakeWindow window;
  window.commands.Run(ID_EXIT);
  EXPECT_TRUE(window.desktop.closed);
}

TEST(CommandsTest, RemoveRemovesTheSelection) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.view.selected = {1};
  window.commands.Run(ID_REMOVE);
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].Path(), u"a");
}

TEST(CommandsTest, SelectAllThenRemoveEmptiesTheList) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.commands.Run(ID_SELECT_ALL);
  window.commands.Run(ID_REMOVE);
  EXPECT_TRUE(window.rows.IsEmpty());
}

TEST(CommandsTest, CancelAndClearReachTheWorker) {
  FakeWindow window;
  window.AddRow(u"a");
  window.commands.Run(IDC_CANCEL);
  EXPECT_EQ(window.queue.cancels, 1);
  EXPECT_EQ(window.rows.Size(), 1u);
  window.commands.Run(ID_CLEAR_LIST);
  EXPECT_EQ(window.queue.cancels, 2);
  EXPECT_TRUE(window.rows.IsEmpty());
}

}  // namespace
}  // namespace app::testing
