// An intake that looks files up on the caller's thread when a request is started, and delivers the
// batches at once or when the test releases them.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <utility>

#include "app/intake/intake.h"
#include "app/intake/intake_run.h"

namespace app::testing {

class FakeIntake final : public Intake {
 public:
  uint64_t Start(IntakeRequest request) override {
    const uint64_t id = ++lastId_;
    const size_t most = isHeld ? 1 : 256;
    IntakeBatch batch{.requestId = id};
    const auto next = [&] { found_.push_back(std::exchange(batch, {.requestId = id})); };
    const std::atomic<bool> cancel = false;
    IntakeEnd end = RunIntake(request, cancel,
                              {.announced =
                                   [&](std::u16string path) {
                                     batch.announcedPaths.push_back(std::move(path));
                                     return true;
                                   },
                               .found =
                                   [&](IntakeFile&& file) {
                                     batch.files.push_back(std::move(file));
                                     if (batch.files.size() == most) next();
                                     return true;
                                   }});
    batch.end = std::move(end);
    next();
    Release(isHeld ? releasedAtOnce : SIZE_MAX);
    return id;
  }

  // Treats all files that have not been released as not looked up yet.
  void Cancel() override {
    std::deque<IntakeBatch> left;
    for (size_t i = 0; i < found_.size(); ++i) {
      IntakeBatch& batch = found_[i];
      if (i >= released_) {
        const bool hasBegun = batch.requestId == current_;
        std::erase_if(batch.files,
                      [&](const IntakeFile& file) { return !file.row.hasExpected || !hasBegun; });
        for (IntakeFile& file : batch.files) {
          file.row.size = 0;
          file.row.modified = 0;
          file.row.error = 0;
          file.row.status = RowStatus::Waiting;
          CancelNewRow(file.row);
        }
        if (!hasBegun) batch.announcedPaths.clear();
        if (batch.end) {
          batch.end->cancelled = true;
          if (!hasBegun) {
            batch.end->readError.reset();
            batch.end->skippedLines.clear();
          }
        } else if (batch.files.empty() && batch.announcedPaths.empty()) {
          continue;
        }
      }
      left.push_back(std::move(batch));
    }
    found_ = std::move(left);
  }
  void Discard() override {
    found_.clear();
    released_ = 0;
  }
  bool WaitForBatch(std::chrono::steady_clock::time_point) override { return released_ > 0; }
  std::unique_ptr<IntakeBatch> Take() override {
    if (released_ == 0) return nullptr;
    --released_;
    auto taken = std::make_unique<IntakeBatch>(std::move(found_.front()));
    found_.pop_front();
    current_ = taken->end ? 0 : taken->requestId;
    return taken;
  }
  void GiveBack(std::unique_ptr<IntakeBatch>) override {}
  bool AnnounceNext() override { return released_ == 0; }

  // Releases up to `most` further batches. With `isHeld`, a batch has one file; the paths that a
  // checksum file announces are in the first.
  void Release(size_t most) {
    released_ = most > found_.size() - released_ ? found_.size() : released_ + most;
  }
  bool IsIdle() const { return found_.empty(); }

  // For requests that are started from now on.
  bool isHeld = false;
  size_t releasedAtOnce = 0;  // with `isHeld`: batches that can be taken while a start waits

 private:
  uint64_t lastId_ = 0;
  uint64_t current_ = 0;  // the request of which some batches, but not the last, have been taken
  std::deque<IntakeBatch> found_;
  size_t released_ = 0;  // how many of found_, from the front
};

}  // namespace app::testing
