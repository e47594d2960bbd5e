// Works on one request from start to end: which files it means and what the system says about them.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "app/intake/intake_request.h"

namespace app {

// Receive the answer, in order. Return false when no more is wanted.
struct IntakeCallbacks {
  std::function<bool(std::u16string)> announced;  // see IntakeBatch::announcedPaths
  std::function<bool(IntakeFile)> found;
};

// What the system says about the file or folder at this path. Does not fail.
IntakeFile LookUpFile(const std::u16string& path);
// The row of a file whose request has been cancelled becomes cancelled, unless the file failed.
void CancelNewRow(Row& row);

// Answers the request on the calling thread. Once `cancel` is set, a walk stops, and the remaining
// files of a checksum file are reported without being looked up.
IntakeEnd RunIntake(const IntakeRequest& request, const std::atomic<bool>& cancel,
                    const IntakeCallbacks& callbacks);

}  // namespace app
