// Each command by its id, and its effect.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;

const std::u16string CopiedText = u"copied elsewhere";
const std::u16string PickedFile = u"no such file";

// Two hashed files in the list, the first one selected, and an answer to each question that a
// command asks.
struct UsedWindow : FakeWindow {
  UsedWindow() {
    for (const char16_t* path : {u"folder/a", u"folder/b"}) {
      Row& row = AddRow(path);
      hashing.QueueRow(row.id, options.algorithms);
      Finish();
    }
    view.selected = {0};
    desktop.Copy(CopiedText);
    desktop.picked = {PickedFile};
    view.algoToChoose = AlgoId::Crc32;
  }
  // The instruction of the only message.
  std::u16string Message() const {
    return desktop.messages.size() == 1 ? desktop.messages[0].mainInstruction : u"";
  }
  bool HasCopied(const std::u16string& start) const {
    return desktop.clipboard && desktop.clipboard->starts_with(start);
  }
  bool HasOpened(std::u16string_view start) const {
    return desktop.openedAddresses.size() == 1 && desktop.openedAddresses[0].starts_with(start);
  }
  bool HasPicked(const std::u16string& title) const {
    return desktop.pickerTitle == title && rows[rows.Size() - 1].Name() == PickedFile;
  }
  bool Selects(AlgoId id) const { return (options.algorithms & swr::MaskOf(id)) != 0; }
};

struct CommandCase {
  uint32_t id;
  const char* name;
  std::function<bool(const UsedWindow&)> isCarriedOut;
};

const std::u16string Md5Line = u"MD5: " + FakeDigestText(AlgoId::Md5);

const CommandCase commands[] = {
    {ID_ADD_FILES, "Add Files",
     [](const UsedWindow& window) { return window.HasPicked(u"Add Files"); }},
    {ID_ADD_FOLDER, "Add Folder",
     [](const UsedWindow& window) { return window.HasPicked(u"Add Folder"); }},
    {ID_VERIFY_FILE, "Verify Checksum File",
     [](const UsedWindow& window) {
       return window.desktop.pickerTitle == u"Verify Checksum File" &&
              window.Message() == u"The checksum file can't be read.";
     }},
    {ID_SAVE_CHECKSUMS, "Save Checksums",
     [](const UsedWindow& window) { return window.desktop.saveRequests.size() == 1; }},
    {ID_EXIT, "Exit", [](const UsedWindow& window) { return window.desktop.closed; }},
    {ID_COPY_HASHES, "Copy Hashes",
     [](const UsedWindow& window) { return window.HasCopied(Md5Line); }},
    {ID_PASTE_EXPECTED, "Paste Expected Hash",
     [](const UsedWindow& window) { return window.view.expectedText == CopiedText; }},
    {ID_SELECT_ALL, "Select All",
     [](const UsedWindow& window) { return window.view.selected.size() == 2; }},
    {ID_REMOVE, "Remove from List",
     [](const UsedWindow& window) { return window.rows.Size() == 1; }},
    {ID_CLEAR_LIST, "Clear List", [](const UsedWindow& window) { return window.rows.IsEmpty(); }},
    {ID_HASH_TEXT, "Hash Text",
     [](const UsedWindow& window) { return window.desktop.hashTexts.size() == 1; }},
    {ID_UPPERCASE, "Uppercase Hashes",
     [](const UsedWindow& window) {
       return window.options.uppercase && window.view.options.uppercase;
     }},
    {ID_SHOW_LEGACY, "Show Legacy Algorithms",
     [](const UsedWindow& window) {
       return window.options.showLegacy && window.view.options.showLegacy;
     }},
    {ID_INCLUDE_HIDDEN, "Include Hidden and System Files",
     [](const UsedWindow& window) {
       return window.options.includeHidden && window.view.options.includeHidden;
     }},
    {ID_CRLF, "Windows Line Ends in Saved Files",
     [](const UsedWindow& window) { return window.options.crLf && window.view.options.crLf; }},
    {ID_EXPLORER_MENU, "Add to Explorer Context Menu",
     [](const UsedWindow& window) {
       return window.installation.GetExplorerState() == ExplorerState::ThisCopy &&
              window.view.options.shellEntries->explorerMenu;
     }},
    {ID_SEND_TO, "Add to Send To Menu",
     [](const UsedWindow& window) {
       return window.installSystem.links.size() == 1 && window.view.options.shellEntries->sendTo;
     }},
    {ID_HELP_ONLINE, "Online Help",
     [](const UsedWindow& window) { return window.HasOpened(ProductPage); }},
    {ID_WEBSITE, "Website", [](const UsedWindow& window) { return window.HasOpened(MakerPage); }},
    {ID_CLI_TOOL, "Command-Line Tool",
     [](const UsedWindow& window) { return window.desktop.messages.size() == 1; }},
    {ID_PROGRAM_FOLDER, "Get the Setup",
     [](const UsedWindow& window) { return window.HasOpened(ProductPage); }},
    {ID_ABOUT, "About",
     [](const UsedWindow& window) { return window.desktop.messages.size() == 1; }},
    {IDC_ALGO_MD5, "MD5", [](const UsedWindow& window) { return !window.Selects(AlgoId::Md5); }},
    {IDC_ALGO_SHA1, "SHA-1",
     [](const UsedWindow& window) { return !window.Selects(AlgoId::Sha1); }},
    {IDC_ALGO_SHA256, "SHA-256",
     [](const UsedWindow& window) { return !window.Selects(AlgoId::Sha256); }},
    {IDC_ALGO_SHA512, "SHA-512",
     [](const UsedWindow& window) { return window.Selects(AlgoId::Sha512); }},
    {IDC_ALGO_BLAKE3, "BLAKE3",
     [](const UsedWindow& window) { return window.Selects(AlgoId::Blake3); }},
    {IDC_ALGO_MORE, "More", [](const UsedWindow& window) { return window.Selects(AlgoId::Crc32); }},
    {IDC_PASTE, "Paste",
     [](const UsedWindow& window) { return window.view.expectedText == CopiedText; }},
    {IDC_COPY, "the Copy Hashes button",
     [](const UsedWindow& window) { return window.HasCopied(Md5Line); }},
    {IDC_VIRUSTOTAL, "the VirusTotal button",
     [](const UsedWindow& window) { return window.HasOpened(VirusTotalFilePage); }},
    {IDC_OPEN_FOLDER, "the Open Folder button",
     [](const UsedWindow& window) { return window.desktop.shownInFolder.size() == 1; }},
    {IDC_CANCEL, "Cancel", [](const UsedWindow& window) { return window.queue.cancels == 1; }},
    {ID_CTX_COPY_LINE, "Copy Line",
     [](const UsedWindow& window) {
       return window.HasCopied(FakeDigestText(AlgoId::Md5) + u"  a\r\n");
     }},
    {ID_CTX_COPY_ALL, "Copy All Hashes",
     [](const UsedWindow& window) { return window.HasCopied(u"MD5 (a) = "); }},
    {ID_CTX_COPY_PATH, "Copy Path",
     [](const UsedWindow& window) { return window.desktop.clipboard == u"folder/a"; }},
    {ID_CTX_VIRUSTOTAL, "Look Up on VirusTotal",
     [](const UsedWindow& window) { return window.HasOpened(VirusTotalFilePage); }},
    {ID_CTX_OPEN_FOLDER, "Open Containing Folder",
     [](const UsedWindow& window) { return window.desktop.shownInFolder.size() == 1; }},
    {ID_CTX_REMOVE, "Remove from List in the list's menu",
     [](const UsedWindow& window) { return window.rows.Size() == 1; }},
};

TEST(CommandEffectsTest, EachCommandHasItsEffect) {
  for (const CommandCase& command : commands) {
    SCOPED_TRACE(command.name);
    UsedWindow window;
    ASSERT_FALSE(command.isCarriedOut(window)) << "the effect exists before the command";
    // A click changes a check box before it sends the command.
    const auto box = std::ranges::find(AlgoBoxes, command.id, &AlgoBox::control);
    if (box != std::end(AlgoBoxes)) window.view.checkedBoxes ^= swr::MaskOf(box->algo);
    EXPECT_TRUE(window.commands.Run(command.id));
    EXPECT_TRUE(command.isCarriedOut(window));
  }
}

// The command that needs two rows.
TEST(CommandEffectsTest, CompareTheseTwoFiles) {
  UsedWindow window;
  window.view.selected = {0, 1};
  EXPECT_TRUE(window.commands.Run(ID_CTX_COMPARE));
  EXPECT_EQ(window.Message(), u"The two files are identical.");
}

TEST(CommandEffectsTest, OtherIdsAreNotCommands) {
  FakeWindow window;
  for (uint32_t id = 0; id <= 0xFFFF; ++id) {
    const bool isCommand = std::ranges::find(commands, id, &CommandCase::id) != std::end(commands);
    if (isCommand || id == ID_CTX_COMPARE) continue;
    EXPECT_FALSE(window.commands.Run(id)) << id;
  }
}

}  // namespace
}  // namespace app::testing
