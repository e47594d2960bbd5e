#include "tests/support/reference_window.h"

#include <algorithm>

#include "swr/text/display_text.h"
#include "swr/text/text.h"

namespace app::testing {
namespace {

using swr::AlgoId;

std::u16string Number(uint64_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

std::u16string Name(AlgoId id) { return std::u16string(swr::GetAlgo(id).name); }

std::u16string Names(const std::vector<AlgoId>& algos, const std::u16string& word) {
  std::u16string text = Name(algos.front());
  for (size_t i = 1; i < algos.size(); ++i) {
    text += i + 1 == algos.size() ? u" " + word + u" " : u", ";
    text += Name(algos[i]);
  }
  return text;
}

// As shown in the details: with the exact number of bytes where the short form rounds.
std::u16string ExactSize(uint64_t bytes) {
  std::u16string text = swr::FormatSize(bytes);
  if (bytes < 1024) return text;
  std::u16string digits = Number(bytes);
  for (size_t place = digits.size(); place > 3;) digits.insert(place -= 3, u",");
  return text + u" (" + digits + u" bytes)";
}

bool IsMissing(const ReferenceFileRow& row) {
  return row.status == RowStatus::Failed && (row.error == 2 || row.error == 3);
}

}  // namespace

std::vector<AlgoId> ReferenceAlgosOfSize(size_t bytes) {
  switch (bytes) {
    case 4:
      return {AlgoId::Crc32};
    case 8:
      return {AlgoId::Xxh64, AlgoId::Xxh3_64};
    case 16:
      return {AlgoId::Md5, AlgoId::Xxh128, AlgoId::Md4, AlgoId::Md2};
    case 20:
      return {AlgoId::Sha1};
    case 32:
      return {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3};
    case 48:
      return {AlgoId::Sha384, AlgoId::Sha3_384};
    default:
      return {AlgoId::Sha512, AlgoId::Sha3_512};
  }
}

std::u16string ReferenceHex(const DigestBytes& bytes, bool uppercase) {
  const std::u16string_view digits = uppercase ? u"0123456789ABCDEF" : u"0123456789abcdef";
  std::u16string text;
  for (const uint8_t byte : bytes) {
    text += digits[byte / 16];
    text += digits[byte % 16];
  }
  return text;
}

ReferenceWindow::Verdict ReferenceWindow::VerdictOf(const ReferenceFileRow& row,
                                                    const ReferenceClaim& claim) {
  if (IsMissing(row)) return {Outcome::Missing};
  if (row.status == RowStatus::Failed) return {Outcome::Unreadable};
  size_t known = 0;
  for (const AlgoId id : claim.algos) {
    if (!row.digests.contains(id)) continue;
    if (row.digests.at(id) == claim.bytes) return {Outcome::Match, id};
    ++known;
  }
  if (known == claim.algos.size()) return {Outcome::Mismatch};
  if (row.status == RowStatus::Cancelled) return {Outcome::NotChecked};
  return {Outcome::Pending};
}

// ---- Events.

ReferenceFileRow* ReferenceWindow::Find(uint64_t id) {
  for (ReferenceFileRow& row : rows) {
    if (row.id == id) return &row;
  }
  return nullptr;
}

bool ReferenceWindow::Queue(ReferenceFileRow& row, const AlgoSet& algos) {
  if (row.status == RowStatus::Failed) return false;
  AlgoSet missing;
  for (const AlgoId id : algos) {
    if (!row.digests.contains(id) && !row.pending.contains(id)) missing.insert(id);
  }
  if (missing.empty()) return false;
  row.pending.insert(missing.begin(), missing.end());
  row.cancelledByUser = false;
  if (row.status != RowStatus::Hashing) row.status = RowStatus::Waiting;
  jobs.push_back({row.id, missing});
  return true;
}

void ReferenceWindow::QueueAll() {
  for (ReferenceFileRow& row : rows) {
    AlgoSet wanted = selectedAlgos;
    if (row.listed) wanted.insert(row.listed->algos.begin(), row.listed->algos.end());
    Queue(row, wanted);
  }
}

void ReferenceWindow::DropJobsOf(uint64_t rowId) {
  std::erase_if(jobs, [&](const ReferenceJob& job) { return job.rowId == rowId; });
}

void ReferenceWindow::Widen(bool isNewValue) {
  heldLine_.reset();
  if (!box.claim) return;
  for (const ReferenceFileRow& row : rows) {
    if (VerdictOf(row, *box.claim).outcome == Outcome::Match) return;
  }
  for (ReferenceFileRow& row : rows) {
    // Cancelled rows stay cancelled until something new is requested.
    if (row.cancelledByUser && !isNewValue) continue;
    Queue(row, AlgoSet(box.claim->algos.begin(), box.claim->algos.end()));
  }
}

void ReferenceWindow::AddFiles(std::vector<ReferenceFileRow> files) {
  const size_t before = rows.size();
  for (ReferenceFileRow& file : files) {
    const auto isThere = [&](const ReferenceFileRow& row) {
      return swr::ToLowerText(row.path) == swr::ToLowerText(file.path);
    };
    if (std::ranges::none_of(rows, isThere)) rows.push_back(std::move(file));
  }
  for (size_t i = before; i < rows.size(); ++i) Queue(rows[i], selectedAlgos);
  if (rows.size() > before) {
    selection = {before};
    if (files.size() == 1) OfferToVerify(rows.back());
  }
  Widen(false);
  shownDetails = Details();
}

void ReferenceWindow::LoadList(std::vector<ReferenceFileRow> listed,
                               const std::vector<uint32_t>& skippedLines) {
  for (ReferenceFileRow& added : listed) {
    for (size_t i = 0; i < rows.size();) {
      if (!rows[i].listed && swr::EqualsNoCase(rows[i].path, added.path)) {
        DropJobsOf(rows[i].id);
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(i));
      } else {
        ++i;
      }
    }
    rows.push_back(std::move(added));
  }
  QueueAll();
  selection.clear();
  if (!skippedLines.empty()) ReportSkippedLines(skippedLines);
  Widen(false);
  shownDetails = Details();
}

void ReferenceWindow::MarkHashing(const std::u16string& currentPath) {
  for (ReferenceFileRow& row : rows) {
    if (IsActive() && !row.pending.empty() && row.status != RowStatus::Failed &&
        swr::EqualsNoCase(row.path, currentPath)) {
      row.status = RowStatus::Hashing;
    }
  }
}

void ReferenceWindow::TakeResults(const std::vector<ReferenceResult>& results,
                                  const std::u16string& currentPath) {
  bool isShown = false;
  for (const ReferenceResult& result : results) {
    ReferenceFileRow* row = Find(result.rowId);
    if (row == nullptr) continue;
    isShown = isShown || (selection.size() == 1 && row == &rows[*selection.begin()]);
    for (const AlgoId id : result.algos) row->pending.erase(id);
    if (result.cancelled) {
      if (row->pending.empty()) row->status = RowStatus::Cancelled;
    } else if (result.error != 0) {
      row->status = RowStatus::Failed;
      row->error = result.error;
      row->pending.clear();
    } else {
      for (const auto& [id, bytes] : result.digests) row->digests[id] = bytes;
      row->changed = row->changed || result.changed;
      row->size = result.size;
      row->status = row->pending.empty() ? RowStatus::Done : RowStatus::Waiting;
    }
    FinishLookUp(*row);
  }
  MarkHashing(currentPath);
  Widen(false);
  if (isShown) shownDetails = Details();
}

void ReferenceWindow::Tick(const std::u16string& currentPath) {
  MarkHashing(currentPath);
  if (!IsActive() && intakes.empty()) Widen(false);
}

void ReferenceWindow::Remove(const std::set<size_t>& indexes) {
  for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
    DropJobsOf(rows[*index].id);
    RememberRemoved(rows[*index]);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(*index));
  }
  selection.clear();
  Widen(false);
  shownDetails = Details();
}

void ReferenceWindow::Clear() {
  intakes.clear();
  jobs.clear();
  rows.clear();
  selection.clear();
  compared_.reset();
  lookedUp_.reset();
  heldLine_.reset();
  HideBanner();
  shownDetails = Details();
}

void ReferenceWindow::Cancel() {
  CancelIntakes();
  jobs.clear();
  for (ReferenceFileRow& row : rows) {
    if (row.pending.empty()) continue;
    row.pending.clear();
    row.cancelledByUser = true;
    if (row.status == RowStatus::Waiting || row.status == RowStatus::Hashing) {
      row.status = RowStatus::Cancelled;
    }
  }
  Widen(false);
}

void ReferenceWindow::EditBox(ReferenceBox edited) {
  box = std::move(edited);
  Widen(true);
  if (banner == ReferenceBanner::Clipboard) HideBanner();
}

void ReferenceWindow::TakeSignature(uint64_t rowId, const std::u16string& words) {
  ReferenceFileRow* row = Find(rowId);
  if (row == nullptr) return;
  row->signature = words;
  if (selection.size() == 1 && row == &rows[*selection.begin()]) shownDetails = Details();
}

void ReferenceWindow::SelectAlgos(AlgoSet chosen) {
  selectedAlgos = chosen.empty() ? AlgoSet{AlgoId::Sha256} : std::move(chosen);
  sortHeading_.reset();
  QueueAll();
  Widen(false);
  shownDetails = Details();
}

bool ReferenceWindow::CompareTwo(size_t first, size_t second) {
  ReferenceFileRow& a = rows[first];
  ReferenceFileRow& b = rows[second];
  if (a.status != RowStatus::Failed && b.status != RowStatus::Failed && a.size != b.size) {
    return true;
  }
  compared_ = {a.id, b.id};
  Queue(a, {AlgoId::Sha256});
  Queue(b, {AlgoId::Sha256});
  Widen(false);
  return false;
}

std::optional<std::u16string> ReferenceWindow::TakeComparison() {
  if (!compared_) return std::nullopt;
  const ReferenceFileRow* a = Find(compared_->first);
  const ReferenceFileRow* b = Find(compared_->second);
  if (a == nullptr || b == nullptr) {
    compared_.reset();
    return std::nullopt;
  }
  for (const ReferenceFileRow* row : {a, b}) {
    if (row->status != RowStatus::Failed && !row->digests.contains(AlgoId::Sha256)) {
      return std::nullopt;
    }
  }
  compared_.reset();
  if (a->status == RowStatus::Failed || b->status == RowStatus::Failed) {
    return u"One of the files can't be read.";
  }
  return a->digests.at(AlgoId::Sha256) == b->digests.at(AlgoId::Sha256)
             ? u"The two files are identical."
             : u"The two files are different.";
}

// ---- What is visible.

std::u16string ReferenceWindow::StatusCell(const ReferenceFileRow& row) const {
  if (row.status == RowStatus::Waiting) return u"Waiting";
  if (row.status == RowStatus::Hashing) return u"Hashing";
  if (row.status == RowStatus::Cancelled) return u"Cancelled";
  if (IsMissing(row)) return u"Missing";
  if (row.status == RowStatus::Failed) return swr::FormatErrorText(row.error);
  if (row.listed) {
    const Verdict own = VerdictOf(row, *row.listed);
    if (own.outcome == Outcome::Match) return u"OK (" + Name(own.algo) + u")";
    if (own.outcome == Outcome::Mismatch) return u"FAILED";
  }
  if (box.claim) {
    const Verdict pasted = VerdictOf(row, *box.claim);
    if (pasted.outcome == Outcome::Match) return u"Match (" + Name(pasted.algo) + u")";
  }
  return row.changed ? u"Done, but the file changed while it was read" : u"Done";
}

RowTint ReferenceWindow::Tint(const ReferenceFileRow& row) const {
  if (row.listed) {
    const Outcome own = VerdictOf(row, *row.listed).outcome;
    if (own == Outcome::Match) return RowTint::Good;
    if (own == Outcome::NotChecked) return RowTint::None;
    if (own != Outcome::Pending) return RowTint::Bad;
  }
  if (box.claim && VerdictOf(row, *box.claim).outcome == Outcome::Match) return RowTint::Good;
  return RowTint::None;
}

ResultLine ReferenceWindow::LineOfNow() const {
  if (box.isEmpty) return Summary();
  if (!box.claim) {
    return {u"This doesn't look like a hash. Paste the hex or base64 value from the website.",
            ResultKind::Hint};
  }
  return BoxLine(*box.claim);
}

ResultLine ReferenceWindow::BoxLine(const ReferenceClaim& claim) const {
  if (rows.empty() && intakes.empty()) {
    const std::u16string what = claim.isNamed ? Name(claim.algos.front()) + u" hash."
                                              : u"hash (" + Names(claim.algos, u"or") + u").";
    return {u"Add the file to compare with this " + what, ResultKind::Hint};
  }
  std::vector<std::pair<const ReferenceFileRow*, AlgoId>> matches;
  bool isPending = false;
  const ReferenceFileRow* reported = rows.size() == 1 ? &rows.front() : nullptr;
  for (const ReferenceFileRow& row : rows) {
    const Verdict verdict = VerdictOf(row, claim);
    if (verdict.outcome == Outcome::Match) matches.emplace_back(&row, verdict.algo);
    if (verdict.outcome == Outcome::Pending) isPending = true;
    if (!claim.fileName.empty() && swr::EqualsNoCase(row.name, claim.fileName)) reported = &row;
  }
  if (matches.size() == 1) {
    return {u"Match. The " + Name(matches[0].second) + u" of " + matches[0].first->name +
                u" is the expected hash.",
            ResultKind::Good};
  }
  if (!matches.empty()) {
    return {u"Match. " + Number(matches.size()) + u" files have this " + Name(matches[0].second) +
                u" hash.",
            ResultKind::Good};
  }
  if (isPending || !intakes.empty()) return {u"Checking...", ResultKind::Busy};
  if (reported == nullptr) {
    return {u"No match. None of the " + Number(rows.size()) + u" files has this hash.",
            ResultKind::Bad};
  }
  if (reported->status == RowStatus::Failed) {
    return {reported->name + u" can't be read, so it can't be compared.", ResultKind::Bad};
  }
  return {u"No match. " + reported->name + u" has a different " + Names(claim.algos, u"and") + u".",
          ResultKind::Bad};
}

ResultLine ReferenceWindow::Summary() const {
  std::map<Outcome, uint64_t> counts;
  uint64_t total = 0;
  for (const ReferenceFileRow& row : rows) {
    if (!row.listed) continue;
    ++counts[VerdictOf(row, *row.listed).outcome];
    ++total;
  }
  if (total == 0) return {u"", ResultKind::None};
  const uint64_t ok = counts[Outcome::Match];
  const uint64_t notChecked = counts[Outcome::NotChecked] + counts[Outcome::Pending];
  const bool isWorking = IsActive() || !intakes.empty();
  if ((notChecked > 0 && isWorking) || IsListOpen()) {
    return {u"Verifying " + Number(total) + u" files...", ResultKind::Busy};
  }
  if (total == ok) {
    return {ok == 1 ? u"The file is OK." : u"All " + Number(ok) + u" files are OK.",
            ResultKind::Good};
  }
  std::u16string text = u"Not all files match: " + Number(ok) + u" OK";
  if (counts[Outcome::Mismatch] > 0) text += u", " + Number(counts[Outcome::Mismatch]) + u" FAILED";
  if (counts[Outcome::Missing] > 0) text += u", " + Number(counts[Outcome::Missing]) + u" missing";
  if (counts[Outcome::Unreadable] > 0) {
    text += u", " + Number(counts[Outcome::Unreadable]) + u" unreadable";
  }
  if (notChecked > 0) text += u", " + Number(notChecked) + u" not checked";
  return {text + u".", ResultKind::Bad};
}

std::u16string ReferenceWindow::Details() const {
  if (selection.size() == 1) return OneRowDetails(rows[*selection.begin()]);
  if (rows.empty()) return u"";
  if (selection.empty()) return Number(rows.size()) + u" files. Select one to see its details.";
  uint64_t total = 0;
  for (const size_t index : selection) total += rows[index].size;
  return Number(selection.size()) + u" files selected, " + swr::FormatSize(total) + u" in total.";
}

std::u16string ReferenceWindow::OneRowDetails(const ReferenceFileRow& row) const {
  std::u16string text = row.name + u"\r\nFolder:\t" + row.folder;
  if (row.status == RowStatus::Failed) {
    text += u"\r\nError:\t" + swr::FormatErrorText(row.error) + u".";
  } else {
    text += u"\r\nSize:\t" + ExactSize(row.size);
    if (!row.modified.empty()) text += u"\r\nModified:\t" + row.modified;
    for (const auto& [id, bytes] : row.digests) {
      text += u"\r\n" + Name(id) + u":\t" + ReferenceHex(bytes, uppercase);
    }
    text += u"\r\nSignature:\t" + row.signature;
  }
  if (row.listed) {
    text += u"\r\nExpected:\t" + ReferenceHex(row.listed->bytes, uppercase) + u" (" +
            row.checksumFile + u", line " + Number(row.checksumLine) + u")";
  }
  return text;
}

}  // namespace app::testing
