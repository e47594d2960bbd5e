// The parts of the registry, the disk and the shell that Installation needs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace app {

enum class RegistryHive : uint8_t { CurrentUser, LocalMachine };

// 64-bit Windows has two copies of some keys: for 64-bit and for 32-bit programs.
enum class RegistryView : uint8_t { Own, Bits64, Bits32 };

// Implemented by the platform and by the tests. Called on the window's thread. Errors are Windows
// error codes, 0 for success.
class InstallSystem {
 public:
  virtual ~InstallSystem() = default;

  // The full path of the running program's file.
  virtual std::u16string ProgramPath() = 0;
  // Whether the process runs from a package of the platform's store.
  virtual bool RunsFromPackage() = 0;
  // Whether a file or folder exists at this path.
  virtual bool Exists(const std::u16string& path) = 0;

  // A text value of a key; an empty name means the key's default value. Nothing when it is missing,
  // of another type, longer than 2047 code units, or can't be read.
  virtual std::optional<std::u16string> ReadRegistryText(RegistryHive hive, RegistryView view,
                                                         const std::u16string& key,
                                                         const std::u16string& name) = 0;
  // Both work in the user's hive. The first creates a missing key.
  virtual uint32_t WriteRegistryText(const std::u16string& key, const std::u16string& name,
                                     const std::u16string& text) = 0;
  virtual uint32_t DeleteRegistryTree(const std::u16string& key) = 0;
  // Tells the shell that the entries of its menus have changed.
  virtual void AnnounceEntryChange() = 0;

  // The user's Send To folder, if there is one.
  virtual std::optional<std::u16string> SendToFolder() = 0;
  // Nothing when the link can't be read.
  virtual std::optional<std::u16string> ReadLinkTarget(const std::u16string& linkPath) = 0;
  // Creates a link to the program `target`, with its first icon. False when it can't be saved.
  virtual bool WriteLink(const std::u16string& linkPath, const std::u16string& target,
                         const std::u16string& description) = 0;
  virtual uint32_t RemoveFile(const std::u16string& path) = 0;
};

}  // namespace app
