// The system's dialogs for choosing files and folders.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace app {

struct FileFilter {
  std::u16string label;
  std::u16string pattern;  // several are separated by ";"

  bool operator==(const FileFilter&) const = default;
};

struct SaveRequest {
  std::u16string title;
  std::vector<FileFilter> filters;
  size_t filter = 0;                // index of the preselected one
  std::u16string defaultExtension;  // without the dot
  std::u16string fileName;
  std::u16string folder;  // where the dialog opens, if there is such a folder
};

struct SaveTarget {
  std::u16string path;
  size_t filter = 0;
};

// Implemented by the platform and by the tests. Called on the window's thread, which keeps handling
// messages while a dialog is open.
class Pickers {
 public:
  virtual ~Pickers() = default;

  // Full paths of the files or the folder chosen; empty when the user cancelled. Without filters
  // the dialog offers no choice of file types.
  virtual std::vector<std::u16string> PickFiles(const std::u16string& title,
                                                const std::vector<FileFilter>& filters) = 0;
  virtual std::vector<std::u16string> PickFolder(const std::u16string& title) = 0;
  // If the file exists, the user has agreed to overwrite it. Nothing when the user cancelled.
  virtual std::optional<SaveTarget> PickSaveTarget(const SaveRequest& request) = 0;
};

}  // namespace app
