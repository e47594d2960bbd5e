// The reference window's rules for files that are looked up while other things happen.
#include <algorithm>
#include <utility>

#include "swr/text/text.h"
#include "tests/support/reference_window.h"

namespace app::testing {
namespace {

void MakeCancelled(ReferenceFileRow& row) {
  if (row.status == RowStatus::Failed) return;
  row.status = RowStatus::Cancelled;
  row.cancelledByUser = true;
}

}  // namespace

bool ReferenceWindow::IsListOpen() const {
  return std::ranges::any_of(intakes, &ReferenceIntake::isList);
}

void ReferenceWindow::StartIntake(ReferenceIntake intake) {
  intake.given = intake.files.size();
  intakes.push_back(std::move(intake));
  Widen(false);
  shownDetails = Details();
}

std::vector<std::u16string> ReferenceWindow::TakeFiles(size_t count, uint64_t& nextId) {
  std::vector<std::u16string> messages;
  while (count > 0 && !intakes.empty()) {
    // When a message is shown, the window stops taking files for the moment, so a new round begins.
    std::optional<std::u16string> message;
    for (; count > 0 && !intakes.empty() && !message; --count) {
      ReferenceIntake& intake = intakes.front();
      if (intake.files.empty()) {
        message = EndIntake();
        continue;
      }
      ReferenceFileRow file = std::move(intake.files.front());
      intake.files.erase(intake.files.begin());
      file.id = nextId++;
      if (intake.isCancelled) MakeCancelled(file);
      intake.isList ? TakeListed(intake, std::move(file)) : TakeAdded(intake, std::move(file));
      intake.hasBegun = true;
    }
    Widen(false);
    shownDetails = Details();
    if (message) messages.push_back(*message);
  }
  return messages;
}

// A file that was dropped before its row was removed does not come back.
void ReferenceWindow::RememberRemoved(const ReferenceFileRow& row) {
  for (ReferenceIntake& intake : intakes) intake.removed.insert(swr::ToLowerText(row.path));
}

void ReferenceWindow::TakeAdded(ReferenceIntake& intake, ReferenceFileRow file) {
  if (intake.removed.contains(swr::ToLowerText(file.path))) return;
  for (const ReferenceFileRow& row : rows) {
    if (swr::ToLowerText(row.path) == swr::ToLowerText(file.path)) return;
  }
  if (intake.given == 1) intake.offered = file;
  rows.push_back(std::move(file));
  if (!std::exchange(intake.hasRows, true)) selection = {rows.size() - 1};
  if (!intake.isCancelled) Queue(rows.back(), selectedAlgos);
}

void ReferenceWindow::TakeListed(ReferenceIntake& intake, ReferenceFileRow file) {
  if (!intake.hasBegun) {
    const auto isListed = [&](const ReferenceFileRow& row) {
      return swr::EqualsNoCase(row.path, file.path) ||
             std::ranges::any_of(intake.files, [&](const ReferenceFileRow& later) {
               return swr::EqualsNoCase(row.path, later.path);
             });
    };
    for (const ReferenceFileRow& row : rows) {
      if (!row.listed && isListed(row)) DropJobsOf(row.id);
    }
    std::erase_if(rows, [&](const auto& row) { return !row.listed && isListed(row); });
    if (!intake.isCancelled) QueueAll();
    selection.clear();
  }
  AlgoSet wanted = selectedAlgos;
  wanted.insert(file.listed->algos.begin(), file.listed->algos.end());
  rows.push_back(std::move(file));
  intake.hasRows = true;
  if (!intake.isCancelled) Queue(rows.back(), wanted);
}

std::optional<std::u16string> ReferenceWindow::EndIntake() {
  const ReferenceIntake ended = std::move(intakes.front());
  intakes.pop_front();
  if (ended.offered) OfferToVerify(*ended.offered);
  if (!ended.isList) return std::nullopt;
  if (!ended.hasRows && !ended.isCancelled) return u"No checksums were found in this file.";
  if (ended.hasRows && !ended.skippedLines.empty()) ReportSkippedLines(ended.skippedLines);
  return std::nullopt;
}

// Files that were not looked up yet are not looked up any more; the lines of a checksum file that
// has been read become cancelled rows.
void ReferenceWindow::CancelIntakes() {
  for (ReferenceIntake& intake : intakes) {
    intake.isCancelled = true;
    if (!intake.isList || !intake.hasBegun) intake.files.clear();
    for (ReferenceFileRow& file : intake.files) {
      file.status = RowStatus::Cancelled;
      file.error = 0;
      file.size = 0;
      file.modified.clear();
      file.cancelledByUser = true;
    }
  }
}

}  // namespace app::testing
