#include "app/flows/expected_hash.h"

#include <optional>
#include <string>
#include <string_view>

#include "app/verdicts/result_line.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/text/text.h"

namespace app {

ExpectedHash::ExpectedHash(RowTable& rows, Hashing& hashing, const OpenRequests& open,
                           ProgressDisplay& progress, Banners& banners, Clipboard& clipboard,
                           ListView& list, ExpectedView& view)
    : rows_(rows),
      hashing_(hashing),
      open_(open),
      progress_(progress),
      banners_(banners),
      clipboard_(clipboard),
      list_(list),
      view_(view) {}

void ExpectedHash::Compare() {
  const std::u16string text = view_.ExpectedText();
  const std::u16string_view trimmed = swr::TrimText(text);
  const std::optional<swr::ParsedHash> expected = swr::ParseExpectedHash(trimmed);
  const bool isNew = expected != rows_.Expected();
  rows_.CompareWith(expected);

  ResultLine line;
  bool queued = false;
  if (trimmed.empty()) {
    // Rows whose results have not arrived yet must not be reported as unchecked.
    const WorkerSnapshot snapshot = hashing_.Snapshot();
    const bool isWorking = snapshot.active || snapshot.hasFinishedJobs || open_.Any();
    line = VerificationLine(rows_.Counters().Verification(), isWorking, open_.checksumFiles > 0);
  } else if (!expected) {
    line = NotAHashLine();
  } else if (rows_.IsEmpty() && !open_.Any()) {
    line = FileWantedLine(*expected);
  } else {
    // This is the only place where a pasted value changes what is hashed. Only a new value resumes
    // what the user has cancelled; otherwise Cancel would have no effect.
    const RowCounters& counters = rows_.Counters();
    if (counters.Matches() == 0 && (isNew || counters.LacksCandidates())) {
      queued = hashing_.QueueCandidates(*expected, isNew);
    }
    line = ExpectedHashLine(rows_, *expected, open_.Any());
  }
  view_.SetResultLine(line.text, line.kind);
  // The texts and colours of the rows depend on the value.
  if (isNew || queued) list_.RedrawRows();
}

void ExpectedHash::OnEdited() {
  // The same value entered again is treated as a new one, and the list stops showing the old
  // verdicts.
  if (rows_.Expected()) {
    rows_.CompareWith(std::nullopt);
    list_.RedrawRows();
  }
  Compare();
  if (banners_.Kind() == BannerKind::Clipboard) banners_.Hide();
  progress_.Update();
}

void ExpectedHash::Paste() {
  const std::optional<std::u16string> text = clipboard_.ReadClipboardText();
  if (!text) return;
  view_.SetExpectedText(std::u16string(swr::TrimText(*text)));
  banners_.Hide();
}

}  // namespace app
