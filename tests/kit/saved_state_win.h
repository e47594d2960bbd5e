// The record on disk of the state to restore, and the guard process that restores it when the run
// itself no longer can.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/user_state_win.h"

namespace kit {

// The path of the record during a run, in the user's own folder; empty when there is no such
// folder.
std::wstring SavedStatePath();
bool HasSavedState();
// False when the record can't be written.
bool SaveState(const UserState& state);

// Restores the state from the record and deletes it. Only one process does so at a time; does
// nothing without a record. Returns a sentence for each thing that could not be restored; in that
// case the record is kept under another name.
std::vector<std::string> RestoreSavedState();

// Starts this program again as the guard, without a console. It waits for the end of this process
// and restores what is then still in the record. False when it can't be started.
bool StartGuard();
// What the guard does. `process` is the id of the process to wait for.
void Guard(DWORD process);

}  // namespace kit
