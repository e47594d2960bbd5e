#include "app/flows/file_arrivals.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace app {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Leaves time for the work that follows: handling a message may take 50 ms in all.
constexpr milliseconds LongestWait{30};

// Shows the wait cursor while it exists.
class WaitCursor {
 public:
  explicit WaitCursor(Frame& frame) : frame_(frame) { frame_.BeginWait(); }
  ~WaitCursor() { frame_.EndWait(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

 private:
  Frame& frame_;
};

}  // namespace

FileArrivals::FileArrivals(Intake& intake, OpenRequests& open, Hashing& hashing, Refresh& refresh,
                           Frame& frame, Messages& messages)
    : intake_(intake),
      open_(open),
      hashing_(hashing),
      refresh_(refresh),
      frame_(frame),
      messages_(messages) {}

void FileArrivals::Start(IntakeRequest request, std::unique_ptr<FileReceiver> receiver) {
  Turn turn;
  {
    const bool isForPaths = std::holds_alternative<PathsRequest>(request);
    std::optional<WaitCursor> cursor;
    if (isForPaths) cursor.emplace(frame_);
    ++(isForPaths ? open_.paths : open_.checksumFiles);
    const auto deadline = Clock::now() + LongestWait;
    const uint64_t id = intake_.Start(std::move(request));
    requests_.push_back({.id = id, .isForPaths = isForPaths, .receiver = std::move(receiver)});
    while (IsOpen(id) && !turn.message && intake_.WaitForBatch(deadline)) {
      if (auto batch = intake_.Take()) TakeBatch(std::move(batch), turn);
    }
    // Updating the list view can take as long as this wait did, so the next TakeSome does it.
    showsLater_ = IsOpen(id) && turn.needsRefresh;
  }
  End(turn);
}

bool FileArrivals::TakeSome(milliseconds longest) {
  if (std::exchange(showsLater_, false)) {
    End({.needsRefresh = true});
    return true;
  }
  const auto deadline = Clock::now() + longest;
  std::unique_ptr<IntakeBatch> batch = intake_.Take();
  if (!batch) return false;
  Turn turn;
  while (batch) {
    TakeBatch(std::move(batch), turn);
    if (!turn.message && Clock::now() < deadline) batch = intake_.Take();
  }
  End(turn);
  return true;
}

void FileArrivals::Cancel() {
  intake_.Cancel();
  for (Request& request : requests_) request.isCancelled = true;
}

void FileArrivals::Forget() {
  intake_.Discard();
  requests_.clear();
  open_ = {};
  showsLater_ = false;
}

void FileArrivals::OnRemoval(const std::vector<const Row*>& rows) {
  for (Request& request : requests_) request.receiver->OnRemoval(rows);
}

bool FileArrivals::IsOpen(uint64_t id) const {
  return std::ranges::find(requests_, id, &Request::id) != requests_.end();
}

void FileArrivals::TakeBatch(std::unique_ptr<IntakeBatch> batch, Turn& turn) {
  Request& request = requests_.front();
  FileReceiver& receiver = *request.receiver;
  if (!batch->announcedPaths.empty()) receiver.Expect(batch->announcedPaths);
  if (!batch->files.empty()) {
    receiver.Take(batch->files, request.isCancelled);
    turn.needsRefresh = true;
  }
  const std::optional<IntakeEnd> end = std::move(batch->end);
  intake_.GiveBack(std::move(batch));
  if (!end) return;
  receiver.Show();
  // The request ends before its message is shown, because the window takes the files of the next
  // one while the message is open.
  const Request ended = std::move(request);
  requests_.pop_front();
  --(ended.isForPaths ? open_.paths : open_.checksumFiles);
  turn.message = ended.receiver->Finish(*end);
  if (!turn.message || ended.isShown) turn.needsRefresh = true;
}

void FileArrivals::End(const Turn& turn) {
  bool needsRefresh = turn.needsRefresh;
  if (!requests_.empty()) {
    if (!showsLater_) requests_.front().receiver->Show();
    hashing_.StartTimer();
  }
  for (Request& request : requests_) needsRefresh |= !std::exchange(request.isShown, true);
  if (needsRefresh) refresh_.AfterRowChange();
  if (turn.message) messages_.ShowTaskDialog(*turn.message);
}

}  // namespace app
