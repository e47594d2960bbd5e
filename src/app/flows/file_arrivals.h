// Where the files that the intake finds enter the list. Each request has a receiver, which turns
// its files into rows; the requests are answered one after the other.
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

// What becomes of the answer to one request.
class FileReceiver {
 public:
  virtual ~FileReceiver() = default;

  // Files of these paths are going to come (see IntakeBatch::announcedPaths).
  virtual void Expect(const std::vector<std::u16string>& paths) = 0;
  // Appends the rows of these files. If the user has cancelled the request, they are cancelled and
  // nothing is queued for them. May move from the rows.
  virtual void Take(std::span<IntakeFile> files, bool isCancelled) = 0;
  // The user is removing these rows. What was asked for before knows them all the same: the files
  // do not come back.
  virtual void OnRemoval(const std::vector<const Row*>& rows) = 0;
  // Brings the list view in line with the rows, after one or several calls of Take.
  virtual void Show() = 0;
  // After the last file. Returns what the user has to be told in a message, if anything.
  virtual std::optional<TaskDialogSpec> Finish(const IntakeEnd& end) = 0;
};

class FileArrivals {
 public:
  // All must outlive the object. `open` is kept up to date for the other flows.
  FileArrivals(Intake& intake, OpenRequests& open, Hashing& hashing, Refresh& refresh, Frame& frame,
               Messages& messages);

  // Starts the request and waits a moment for it: what is found at once is in the list when this
  // returns. The rest comes with TakeSome.
  void Start(IntakeRequest request, std::unique_ptr<FileReceiver> receiver);
  // Takes what has been found in the meantime, but stops after `longest` or when there is a message
  // to show. To be called when the intake has announced something, and at each tick of the progress
  // timer. Returns false if there was nothing to take.
  bool TakeSome(std::chrono::milliseconds longest);
  // Ends all requests: walks stop, and what still comes becomes cancelled rows.
  void Cancel();
  // Ends all requests; nothing more comes of them.
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
  // What has to be done before the window is left to its user again.
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
};

}  // namespace app
