// The record on the disk of what has to be put back, and the process that puts it back when the run
// itself no longer can.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/user_state_win.h"

namespace kit {

// Where the record lies while a run is under way, in the user's own folder; empty when there is no
// such folder.
std::wstring SavedStatePath();
bool HasSavedState();
// False when the record can't be written.
bool SaveState(const UserState& state);

// Puts back what the record holds and deletes it. Only one process does so at a time; does nothing
// without a record. Gives a sentence for each thing that could not be put back; then the record
// is kept under another name.
std::vector<std::string> PutSavedStateBack();

// Starts this program once more, without a console, to wait for the end of this process and put
// back what the record then still holds. False when it can't be started; its handle is not kept.
bool StartGuard();
// What that process does: `process` is the number of the one to wait for.
void Guard(DWORD process);

}  // namespace kit
