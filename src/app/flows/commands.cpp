#include "app/flows/commands.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "app/desktop/shell.h"
#include "app/flows/adding.h"
#include "app/flows/algorithm_selection.h"
#include "app/flows/copying.h"
#include "app/flows/expected_hash.h"
#include "app/flows/file_comparison.h"
#include "app/flows/help.h"
#include "app/flows/list_edits.h"
#include "app/flows/look_up.h"
#include "app/flows/option_switches.h"
#include "app/flows/options.h"
#include "app/flows/saving.h"
#include "app/flows/shell_entries.h"
#include "app/flows/verification.h"
#include "app/screen/algo_boxes.h"
#include "app/screen/edit_focus.h"
#include "app/screen/frame.h"
#include "resources/resource_ids.h"

namespace app {
namespace {

using T = const CommandTargets&;
using S = const CommandState&;

bool HasSelection(S state) { return state.selectedRows > 0; }
bool HasOneRow(S state) { return state.selectedRows == 1; }
bool HasOneReadableRow(S state) { return state.selectedRows == 1 && !state.singleRowFailed; }
bool HasTwoRows(S state) { return state.selectedRows == 2; }
bool CanChangeExplorerMenu(S state) { return !state.explorerMenuIsMachineWide; }

void Remove(T targets, const RowIds& rows) { targets.edits.RemoveRows(rows); }
void CopyHashes(T targets, const RowIds& rows) { targets.copying.CopyHashes(rows); }
void LookUpOnline(T targets, const RowIds& rows) { targets.lookUp.Start(rows); }
void OpenFolder(T targets, const RowIds& rows) {
  const Row* row = rows.size() == 1 ? targets.rows.Find(rows.front()) : nullptr;
  if (row == nullptr) return;
  // The row can be removed while the file manager is called.
  const std::u16string path = row->Path();
  const std::u16string folder(row->Folder());
  targets.shell.ShowInFolder(path, folder);
}
void Paste(T targets) { targets.expected.Paste(); }
template <uint32_t Box>
void FollowBox(T targets) {
  targets.algorithms.FollowBox(std::ranges::find(AlgoBoxes, Box, &AlgoBox::control)->algo);
}

constexpr Command Act(uint32_t id, void (*act)(T), bool (*isAvailable)(S) = nullptr) {
  return {id, act, nullptr, isAvailable};
}
constexpr Command ActOn(uint32_t id, void (*actOn)(T, const RowIds&),
                        bool (*isAvailable)(S) = nullptr) {
  return {id, nullptr, actOn, isAvailable};
}

constexpr Command commands[] = {
    // The File menu.
    Act(ID_ADD_FILES, [](T t) { t.adding.AddChosenFiles(); }),
    Act(ID_ADD_FOLDER, [](T t) { t.adding.AddChosenFolder(); }),
    Act(ID_VERIFY_FILE, [](T t) { t.verification.VerifyChosenFiles(); }),
    ActOn(ID_SAVE_CHECKSUMS, [](T t, const RowIds& rows) { t.saving.Save(rows); }),
    Act(ID_EXIT, [](T t) { t.frame.CloseWindow(); }),
    // The Edit menu. While an edit box has the focus, Copy, Paste and Select All act on its text.
    ActOn(ID_COPY_HASHES,
          [](T t, const RowIds& rows) {
            if (!t.edit.CopyFromFocusedEdit()) t.copying.CopyHashes(rows);
          }),
    Act(ID_PASTE_EXPECTED,
        [](T t) {
          if (!t.edit.PasteIntoFocusedEdit()) t.expected.Paste();
        }),
    Act(ID_SELECT_ALL, [](T t) { t.edit.SelectAll(); }),
    ActOn(ID_REMOVE, Remove),
    Act(ID_CLEAR_LIST, [](T t) { t.edits.Clear(); }),
    Act(ID_HASH_TEXT, [](T t) { t.frame.ShowHashText(t.options.algorithms, t.options.uppercase); }),
    // The Options menu.
    Act(ID_UPPERCASE, [](T t) { t.switches.ToggleUppercase(); }),
    Act(ID_SHOW_LEGACY, [](T t) { t.switches.ToggleShowLegacy(); }),
    Act(ID_INCLUDE_HIDDEN, [](T t) { t.switches.ToggleIncludeHidden(); }),
    Act(ID_CRLF, [](T t) { t.switches.ToggleCrLf(); }),
    Act(
        ID_EXPLORER_MENU, [](T t) { t.shellEntries.ToggleExplorerMenu(); }, CanChangeExplorerMenu),
    Act(ID_SEND_TO, [](T t) { t.shellEntries.ToggleSendTo(); }),
    // The Help menu.
    Act(ID_HELP_ONLINE, [](T t) { t.help.OpenProductPage(); }),
    Act(ID_WEBSITE, [](T t) { t.help.OpenMakerPage(); }),
    Act(ID_CLI_TOOL, [](T t) { t.help.ShowCommandLineTool(); }),
    Act(ID_PROGRAM_FOLDER, [](T t) { t.help.OpenProgramFolder(); }),
    Act(ID_ABOUT, [](T t) { t.help.ShowAbout(); }),
    // The list's context menu.
    ActOn(ID_CTX_COPY_LINE, [](T t, const RowIds& rows) { t.copying.CopyLines(rows); }),
    ActOn(ID_CTX_COPY_ALL, [](T t, const RowIds& rows) { t.copying.CopyAllHashes(rows); }),
    ActOn(ID_CTX_COPY_PATH, [](T t, const RowIds& rows) { t.copying.CopyPaths(rows); }),
    ActOn(ID_CTX_VIRUSTOTAL, LookUpOnline, HasOneReadableRow),
    ActOn(
        ID_CTX_COMPARE, [](T t, const RowIds& rows) { t.comparison.Start(rows); }, HasTwoRows),
    ActOn(ID_CTX_OPEN_FOLDER, OpenFolder),
    ActOn(ID_CTX_REMOVE, Remove),
    // The check boxes and buttons of the dialog.
    Act(IDC_ALGO_MD5, FollowBox<IDC_ALGO_MD5>),
    Act(IDC_ALGO_SHA1, FollowBox<IDC_ALGO_SHA1>),
    Act(IDC_ALGO_SHA256, FollowBox<IDC_ALGO_SHA256>),
    Act(IDC_ALGO_SHA512, FollowBox<IDC_ALGO_SHA512>),
    Act(IDC_ALGO_BLAKE3, FollowBox<IDC_ALGO_BLAKE3>),
    Act(IDC_ALGO_MORE, [](T t) { t.algorithms.ChooseFromMenu(); }),
    Act(IDC_PASTE, Paste),
    ActOn(IDC_COPY, CopyHashes, HasSelection),
    ActOn(IDC_VIRUSTOTAL, LookUpOnline, HasOneReadableRow),
    ActOn(IDC_OPEN_FOLDER, OpenFolder, HasOneRow),
    Act(IDC_CANCEL, [](T t) { t.edits.CancelAll(); }),
};

const Command* FindCommand(uint32_t id) {
  const auto found = std::ranges::find(commands, id, &Command::id);
  return found == std::end(commands) ? nullptr : &*found;
}

}  // namespace

std::span<const Command> AllCommands() { return commands; }

bool IsCommandAvailable(uint32_t id, const CommandState& state) {
  const Command* command = FindCommand(id);
  return command != nullptr && (command->isAvailable == nullptr || command->isAvailable(state));
}

bool Commands::Run(uint32_t id) {
  const Command* command = FindCommand(id);
  if (command == nullptr) return false;
  if (command->act != nullptr) {
    command->act(targets_);
  } else {
    command->actOn(targets_, targets_.selection.Ids());
  }
  return true;
}

bool Commands::RunOn(uint32_t id, const RowIds& rows) {
  const Command* command = FindCommand(id);
  if (command == nullptr || command->actOn == nullptr) return Run(id);
  command->actOn(targets_, rows);
  return true;
}

}  // namespace app
