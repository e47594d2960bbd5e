// Saves and restores the content of the clipboard, in every format that is plain memory. Pictures
// are saved as device-independent bitmaps; formats that only the copying program can render are
// left out.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/record_bytes.h"

namespace kit {

struct ClipboardForm {
  UINT format = 0;
  std::wstring name;  // of a registered format, whose number changes between sessions
  std::string bytes;
};

struct ClipboardCopy {
  std::vector<ClipboardForm> forms;
};

// Throws std::runtime_error when another program keeps the clipboard open for too long.
ClipboardCopy CopyClipboard();
// False when the clipboard can't be opened or written.
bool RestoreClipboard(const ClipboardCopy& copy);

// The content is encrypted for this user, because a killed run can leave a record on the disk.
void Write(RecordWriter& record, const ClipboardCopy& copy);
ClipboardCopy ReadClipboardCopy(RecordReader& record);

}  // namespace kit
