// This copy of the program: how it was installed, and whether the entries in Explorer's menu and in
// the Send To menu start it or another copy. Portable copies can be moved and deleted, so an entry
// can point at a copy that no longer exists.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/install/install_system.h"

namespace app {

// Which copy an entry starts.
enum class ExplorerState : uint8_t {
  None = 0,         // there is no entry
  ThisCopy = 1,     // this one
  OtherCopy = 2,    // another one, which exists
  Stale = 3,        // one that no longer exists; also a link that can't be read
  MachineWide = 4,  // set up for all users of the machine, which this copy can't change
};
using SendToState = ExplorerState;  // never MachineWide

// Nothing is cached: other programs change the registry and the disk.
class Installation {
 public:
  // `system` must outlive the object.
  explicit Installation(InstallSystem& system) : system_(system) {}

  std::u16string ProgramPath() const { return system_.ProgramPath(); }
  // The program's folder, without a trailing separator.
  std::u16string ProgramFolder() const;
  // Whether a file of this name is in the program's folder.
  bool HasCompanion(const std::u16string& fileName) const;
  // Whether the program runs from the folder that its setup recorded.
  bool IsInstalledCopy() const;
  bool IsPackaged() const { return system_.RunsFromPackage(); }
  // Whether `path` is this program or in its folder: two builds in one folder are one copy.
  bool IsThisProgram(const std::u16string& path) const;

  ExplorerState GetExplorerState() const;
  SendToState GetSendToState() const;
  // Make the entries start this copy, or remove them. False when not all of that could be done.
  bool SetExplorerMenu(bool enable);
  bool SetSendToLink(bool enable);

 private:
  ExplorerState StateOf(const std::u16string& target) const;
  std::optional<std::u16string> EntryCommand(RegistryHive hive) const;
  std::optional<std::u16string> LinkPath() const;

  InstallSystem& system_;
};

}  // namespace app
