// Where the window shows the options: the check boxes of the algorithms and the main menu.
#pragma once

#include <optional>
#include <string>

#include "swr/hash/algorithms.h"

namespace app {

// Which of the shell's entries start this copy of the program.
struct ShellEntryChecks {
  bool explorerMenu = false;
  bool canChangeExplorerMenu = true;
  bool sendTo = false;
};

// The options that the menu shows as checked.
struct OptionChecks {
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  bool crLf = false;
  // Nothing when the menu has no such entries.
  std::optional<ShellEntryChecks> shellEntries;
};

// Implemented by the dialog's controls and by the tests. Called on the window's thread.
class MenuView {
 public:
  virtual ~MenuView() = default;

  // `moreText` is the text of the button that opens the menu of all algorithms.
  virtual void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) = 0;
  // Whether the algorithm's own check box is checked; false for an algorithm without one.
  virtual bool IsAlgoChecked(swr::AlgoId id) const = 0;
  virtual void ShowOptions(const OptionChecks& checks) = 0;
  // Removes the commands for the shell's entries from the menu permanently.
  virtual void RemoveShellEntryCommands() = 0;
  // The text of the command ID_PROGRAM_FOLDER.
  virtual void SetProgramFolderText(const std::u16string& text) = 0;
};

}  // namespace app
