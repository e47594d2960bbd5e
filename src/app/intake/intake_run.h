// Carries out one request: finds the files that it refers to, and asks the system for their info.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "app/intake/intake_request.h"

namespace app {

// Receive the answer, in order. Return false to end the request.
struct IntakeCallbacks {
  std::function<bool(std::u16string)> announced;  // see IntakeBatch::announcedPaths
  std::function<bool(IntakeFile&&)> found;
};

// The info of the file or folder at this path; an error is part of the result.
IntakeFile LookUpFile(const std::u16string& path);
// The row of a file whose request has been cancelled becomes cancelled, unless the file failed.
void CancelNewRow(Row& row);

// Answers the request on the calling thread. Once `cancel` is set, a walk stops, and the remaining
// files of a checksum file are reported without being looked up.
IntakeEnd RunIntake(const IntakeRequest& request, const std::atomic<bool>& cancel,
                    const IntakeCallbacks& callbacks);

}  // namespace app
