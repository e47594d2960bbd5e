// The file lookup as the flows see it: they start requests, and take the answers in batches.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

#include "app/intake/intake_request.h"

namespace app {

// Called on the window's thread only.
class Intake {
 public:
  virtual ~Intake() = default;

  // Works on the request once all earlier ones are done. Returns its id; the first is 1.
  virtual uint64_t Start(IntakeRequest request) = 0;
  // Ends all requests. Walks stop. The remaining files of the checksum file that is being worked on
  // still arrive, without being looked up; requests that have not begun end without files. A system
  // call that is in progress delays this until it returns.
  virtual void Cancel() = 0;
  // Ends all requests; no further batch of them arrives.
  virtual void Discard() = 0;
  // Waits until a full batch or the end of a request can be taken. Returns false once the deadline
  // has passed, or if no request is left.
  virtual bool WaitForBatch(std::chrono::steady_clock::time_point deadline) = 0;
  // The next batch, or null if none is ready.
  virtual std::unique_ptr<IntakeBatch> Take() = 0;
  // Hands over a batch that is no longer needed. The thread that filled it reuses its memory: two
  // threads that free each other's memory contend for the same heap.
  virtual void GiveBack(std::unique_ptr<IntakeBatch> batch) = 0;
  // To be called when Take found nothing: the next batch is announced again. Returns false, and
  // does nothing, if a batch has arrived meanwhile.
  virtual bool AnnounceNext() = 0;
};

}  // namespace app
