// The content of a task dialog, which the flows use for all messages to the user.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace app {

enum class TaskDialogIcon : uint8_t { None = 0, Information = 1, Warning = 2, Error = 3 };

struct TaskDialogButton {
  int id = 0;
  std::u16string text;  // of a command link: the link, a line feed and the note under it

  bool operator==(const TaskDialogButton&) const = default;
};

// The platform's own buttons, as flags (TDCBF_OK_BUTTON and TDCBF_CLOSE_BUTTON of commctrl.h).
inline constexpr uint32_t OkButton = 0x0001;
inline constexpr uint32_t CloseButton = 0x0020;

// The result when a dialog is closed without a choice (IDCANCEL of winuser.h).
inline constexpr int CancelAnswer = 2;

// Links in the texts are written <a href="...">words</a>; a click passes the address to the shell.
struct TaskDialogSpec {
  std::u16string title;            // of the window; "Sumwright" when empty
  std::u16string mainInstruction;  // the headline
  std::u16string content;
  std::u16string footer;  // shown beside the information icon
  TaskDialogIcon icon = TaskDialogIcon::None;
  std::vector<TaskDialogButton> buttons;
  uint32_t commonButtons = 0;  // OK when there are no others
  int defaultButton = 0;       // id; the first button when 0
  bool commandLinks = false;   // show the buttons as command links
  int customIcon = 0;          // number of an icon resource, shown when `icon` is None

  bool operator==(const TaskDialogSpec&) const = default;
};

// A dialog with a message and an OK button.
inline TaskDialogSpec MessageDialog(TaskDialogIcon icon, std::u16string mainInstruction,
                                    std::u16string content = {}) {
  return {
      .mainInstruction = std::move(mainInstruction), .content = std::move(content), .icon = icon};
}

}  // namespace app
