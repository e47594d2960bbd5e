// The text of the dialog that introduces swrhash, the command-line tool. It is a separate program,
// which may or may not be in the same folder as this one.
#pragma once

#include <string>

#include "app/desktop/task_dialog.h"

namespace app {

inline constexpr char16_t CommandLineToolFile[] = u"swrhash.exe";

// The dialog's results other than CancelAnswer.
inline constexpr int OpenPromptAnswer = 100;
inline constexpr int OpenProgramFolderAnswer = 101;
inline constexpr int GetToolAnswer = 102;

TaskDialogSpec CommandLineToolDialog(bool isThere, const std::u16string& programFolder);

}  // namespace app
