// Looks up files on a separate thread. On a slow share every system call can take a long time, and
// the window must not wait for it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "app/intake/intake.h"

namespace app {

class FileIntake final : public Intake {
 public:
  // `announce` tells the window's thread that a batch can be taken. It is called on the intake's
  // thread (on the window's if no thread can be started), and must neither wait for the window nor
  // call the intake. It returns false if the window could not be notified; the next file tries
  // again.
  explicit FileIntake(std::function<bool()> announce);
  ~FileIntake() override;
  FileIntake(const FileIntake&) = delete;
  FileIntake& operator=(const FileIntake&) = delete;

  // If no thread can be started, the request is worked on before this returns.
  uint64_t Start(IntakeRequest request) override;
  void Cancel() override;
  void Discard() override;
  bool WaitForBatch(std::chrono::steady_clock::time_point deadline) override;
  std::unique_ptr<IntakeBatch> Take() override;
  void GiveBack(std::unique_ptr<IntakeBatch> batch) override;
  bool AnnounceNext() override;

  // Discards all requests and ends the thread within half a second. If the system still holds a
  // call of the thread by then, the thread is abandoned: it ends when the call returns, and
  // announces nothing any more. Later requests are ignored. The destructor does this too.
  void Stop();

 private:
  class State;

  // Shared with the thread, which can outlive this object.
  const std::shared_ptr<State> state_;
  uint64_t lastId_ = 0;
  bool hasThread_ = false;
};

}  // namespace app
