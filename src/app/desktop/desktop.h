// What the window's decisions ask of the desktop around it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/desktop/task_dialog.h"
#include "swr/hash/algorithms.h"

namespace app {

struct FileFilter {
  std::u16string label;
  std::u16string pattern;  // several are separated by ";"

  bool operator==(const FileFilter&) const = default;
};

struct SaveRequest {
  std::u16string title;
  std::vector<FileFilter> filters;
  size_t filter = 0;                // the one preselected
  std::u16string defaultExtension;  // without a full stop
  std::u16string fileName;
  std::u16string folder;  // where it opens; the dialog's own choice when there is no such folder
};

struct SaveTarget {
  std::u16string path;
  size_t filter = 0;
};

// Implemented by the platform and by the tests. Called on the window's thread.
class Desktop {
 public:
  virtual ~Desktop() = default;

  // Full paths of the files or the folder chosen; empty when the user cancelled.
  virtual std::vector<std::u16string> PickFiles(const std::u16string& title,
                                                const std::vector<FileFilter>& filters) = 0;
  virtual std::vector<std::u16string> PickFolder(const std::u16string& title) = 0;
  // Where to save; the user has agreed to overwrite what is there. Nothing when the user cancelled.
  virtual std::optional<SaveTarget> PickSaveTarget(const SaveRequest& request) = 0;
  // Returns when the user has closed the dialog: the id of the button.
  virtual int ShowTaskDialog(const TaskDialogSpec& spec) = 0;

  // Changes whenever something is put on the clipboard.
  virtual uint32_t ClipboardSequence() = 0;
  // Nothing when the clipboard holds no text or can't be opened.
  virtual std::optional<std::u16string> ReadClipboardText() = 0;
  virtual void WriteClipboardText(const std::u16string& text) = 0;

  // Opens a web address with the user's browser.
  virtual void OpenAddress(const std::u16string& address) = 0;
  // Opens a folder with the file manager.
  virtual void OpenFolder(const std::u16string& folder) = 0;
  // Opens a command prompt in this folder, which runs the command and stays.
  virtual void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) = 0;
  // Opens the file's folder with the file selected; when that fails, `folder` itself.
  virtual void ShowInFolder(const std::u16string& path, const std::u16string& folder) = 0;
  // Returns when the dialog is closed.
  virtual void ShowHashText(swr::AlgoMask mask, bool uppercase) = 0;
  // Leads to MainWindow::OnSignatureResult, some time later.
  virtual void StartSignatureCheck(uint64_t rowId, const std::u16string& path) = 0;

  // The user's settings, by name. Reading gives nothing, or false, when the value is missing or of
  // another type or size; a failed write is silent.
  virtual std::optional<uint32_t> ReadDwordSetting(const std::u16string& name) = 0;
  virtual bool ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) = 0;
  virtual void WriteDwordSetting(const std::u16string& name, uint32_t value) = 0;
  virtual void WriteBinarySetting(const std::u16string& name, std::span<const uint8_t> data) = 0;

  // The progress timer calls MainWindow::OnProgressTimer every 200 ms until it is stopped.
  virtual void StartProgressTimer() = 0;
  virtual void StopProgressTimer() = 0;

  // Shows the wait cursor from one call to the other. Not nested.
  virtual void BeginWait() = 0;
  virtual void EndWait() = 0;

  virtual void CloseWindow() = 0;
};

}  // namespace app
