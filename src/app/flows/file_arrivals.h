// Passes the files that the intake finds to the list. Each request has a receiver, which makes rows
// from its files; the requests are answered one after the other.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/desktop/messages.h"
#include "app/flows/hashing.h"
#include "app/flows/open_requests.h"
#include "app/flows/refresh.h"
#include "app/intake/intake.h"
#include "app/rows/row.h"
#include "app/screen/frame.h"

namespace app {

// Receives the answer to one request.
class FileReceiver {
 public:
  virtual ~FileReceiver() = default;

  // Files with these paths will arrive (see IntakeBatch::announcedPaths).
  virtual void Expect(const std::vector<std::u16string>& paths) = 0;
  // Appends the rows of these files. If the user has cancelled the request, they are cancelled and
  // nothing is queued for them. May move from the rows.
  virtual void Take(std::span<IntakeFile> files, bool isCancelled) = 0;
  // The user is removing these rows. Earlier requests still treat their files as known, so that
  // they do not come back.
  virtual void OnRemoval(const std::vector<const Row*>& rows) = 0;
  // Brings the list view in line with the rows, after one or several calls of Take.
  virtual void Show() = 0;
  // Called after the last file. Returns the message to show, if any.
  virtual std::optional<TaskDialogSpec> Finish(const IntakeEnd& end) = 0;
};

class FileArrivals {
 public:
  // All must outlive the object. `open` is kept up to date for the other flows.
  FileArrivals(Intake& intake, OpenRequests& open, Hashing& hashing, Refresh& refresh, Frame& frame,
               Messages& messages);

  // Starts the request and waits a moment for it: files found by then are in the list when this
  // returns. TakeSome adds the others.
  void Start(IntakeRequest request, std::unique_ptr<FileReceiver> receiver);
  // Takes the files found meanwhile, but stops after `longest` or when there is a message to show.
  // To be called when the intake has announced something, and at each tick of the progress
  // timer. Returns false if there was nothing to take.
  bool TakeSome(std::chrono::milliseconds longest);
  // Cancels all requests: walks stop, and files that still arrive become cancelled rows.
  void Cancel();
  // Ends all requests; no more of their files arrive.
  void Forget();
  // To be called before the user removes these rows.
  void OnRemoval(const std::vector<const Row*>& rows);

  const OpenRequests& Open() const { return open_; }

 private:
  struct Request {
    uint64_t id = 0;
    bool isForPaths = false;
    bool isCancelled = false;
    bool isShown = false;  // the screen has been updated since it was started
    std::unique_ptr<FileReceiver> receiver;
  };
  // What is left to do before the window handles further input.
  struct Turn {
    bool needsRefresh = false;
    std::optional<TaskDialogSpec> message;
  };

  bool IsOpen(uint64_t id) const;
  void TakeBatch(std::unique_ptr<IntakeBatch> batch, Turn& turn);
  void End(const Turn& turn);

  Intake& intake_;
  OpenRequests& open_;
  Hashing& hashing_;
  Refresh& refresh_;
  Frame& frame_;
  Messages& messages_;
  std::deque<Request> requests_;  // in the order of their start
  bool showsLater_ = false;       // the list view is updated by the next TakeSome
};

}  // namespace app
