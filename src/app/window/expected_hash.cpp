// The Expected hash box: what the pasted value is, whether the list must be hashed further to find
// out, and what the result line says of it.
#include <utility>

#include "app/window/main_window.h"
#include "app/window/result_line.h"
#include "swr/text/text.h"

namespace app {

void MainWindow::CompareExpected() {
  const std::u16string text = view_.ExpectedText();
  const std::u16string_view trimmed = swr::TrimText(text);
  const std::optional<swr::ParsedHash> before =
      std::exchange(boxExpected, swr::ParseExpectedHash(trimmed));
  const bool isNew = boxExpected != before;
  tally_.CompareWith(boxExpected);

  ResultLine line;
  bool queued = false;
  if (trimmed.empty()) {
    // What is on its way is not called unchecked.
    const WorkerSnapshot snapshot = queue_.GetSnapshot();
    line = VerificationLine(tally_.Verification(), snapshot.active || snapshot.resultsWait);
  } else if (!boxExpected) {
    line = NotAHashLine();
  } else if (rows.empty()) {
    line = FileWantedLine(*boxExpected);
  } else {
    const bool hasMatch = tally_.Box().matches > 0;
    if (!hasMatch && (isNew || tally_.WantsCandidates())) {
      queued = QueueCandidates(*boxExpected, isNew);
    }
    line = BoxLine(tally_.Box(), rows, *boxExpected);
  }
  view_.SetResultLine(line.text, line.kind);
  // The box shows in the rows' texts and colours.
  if (isNew || queued) view_.RedrawRows();
}

// The one place where a pasted value changes what is hashed. What the user has cancelled is taken
// up again for a new value only, or Cancel would be without effect.
bool MainWindow::QueueCandidates(const swr::ParsedHash& expected, bool withCancelled) {
  const swr::AlgoMask mask = swr::CandidateMask(expected.candidates);
  std::vector<HashJob> jobs;
  for (const auto& row : rows) {
    if (row->cancelledByUser && !withCancelled) continue;
    if (auto job = JobFor(*row, mask)) jobs.push_back(*std::move(job));
  }
  return QueueJobs(std::move(jobs));
}

void MainWindow::OnExpectedEdited() {
  // The same value given again is a new one. What the old one showed in the list has to go.
  if (std::exchange(boxExpected, std::nullopt)) view_.RedrawRows();
  CompareExpected();
  if (bannerKind == BannerKind::Clipboard) HideBanner();
  UpdateStatusLine();
}

void MainWindow::PasteExpected() {
  const std::optional<std::u16string> text = desktop_.ReadClipboardText();
  if (!text) return;
  view_.SetExpectedText(std::u16string(swr::TrimText(*text)));
  HideBanner();
}

}  // namespace app
