// What is on the clipboard, in every form that is plain memory, kept aside and put back. Pictures
// are there as device-independent bitmaps; forms that only the program that copied them can draw
// are left out.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/record_bytes.h"

namespace kit {

struct ClipboardForm {
  UINT format = 0;
  std::wstring name;  // of a registered format, whose number differs from session to session
  std::string bytes;
};

struct ClipboardCopy {
  std::vector<ClipboardForm> forms;
};

// Throws std::runtime_error when another program holds the clipboard open for long.
ClipboardCopy CopyClipboard();
// False when the clipboard can't be opened or takes nothing.
bool PutClipboardBack(const ClipboardCopy& copy);

// The content is encrypted for this user: a record may be left on the disk by a run that was
// killed.
void Write(RecordWriter& record, const ClipboardCopy& copy);
ClipboardCopy ReadClipboardCopy(RecordReader& record);

}  // namespace kit
