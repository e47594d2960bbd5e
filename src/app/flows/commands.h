// The commands: what each does and when it is available, in one table that menus, buttons, keys and
// the context menu share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "app/flows/selection.h"

namespace app {

class Adding;
class AlgorithmSelection;
class Copying;
class EditFocus;
class ExpectedHash;
class FileComparison;
class Frame;
class Help;
class ListEdits;
class LookUp;
class OptionSwitches;
class Saving;
class Shell;
class ShellEntries;
class Verification;
struct Options;

// The state that the availability of commands depends on.
struct CommandState {
  size_t selectedRows = 0;
  bool singleRowFailed = false;  // meaningful with one selected row
  bool explorerMenuIsMachineWide = false;
};

// The objects that commands work on. All must outlive the Commands.
struct CommandTargets {
  const RowTable& rows;
  const Selection& selection;
  const Options& options;
  Adding& adding;
  Verification& verification;
  Saving& saving;
  Copying& copying;
  ListEdits& edits;
  ExpectedHash& expected;
  AlgorithmSelection& algorithms;
  OptionSwitches& switches;
  ShellEntries& shellEntries;
  LookUp& lookUp;
  FileComparison& comparison;
  Help& help;
  EditFocus& edit;
  Shell& shell;
  Frame& frame;
};

struct Command {
  uint32_t id;  // from resource_ids.h
  // Exactly one of these is set; the second receives the rows to work on.
  void (*act)(const CommandTargets& targets);
  void (*actOn)(const CommandTargets& targets, const RowIds& rows);
  // Null for a command that is always available.
  bool (*isAvailable)(const CommandState& state);
};

// Every command of the main window, each once.
std::span<const Command> AllCommands();

// False for an id that is not a command.
bool IsCommandAvailable(uint32_t id, const CommandState& state);

class Commands {
 public:
  explicit Commands(const CommandTargets& targets) : targets_(targets) {}

  // Carries out the command, on the selected rows if it works on rows. False for an id that is not
  // a command.
  bool Run(uint32_t id);
  // The same on these rows, independently of the current selection.
  bool RunOn(uint32_t id, const RowIds& rows);

 private:
  CommandTargets targets_;
};

}  // namespace app
