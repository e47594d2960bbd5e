#include "tests/support/random_window.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "resources/resource_ids.h"
#include "swr/system/local_time.h"
#include "swr/text/encoding.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr uint64_t Sizes[RandomFiles::Count] = {1, 1, 2, 3, 1};

swr::AlgoMask MaskOfSet(const AlgoSet& algos) {
  swr::AlgoMask mask = 0;
  for (const AlgoId id : algos) mask |= swr::MaskOf(id);
  return mask;
}

AlgoSet SetOfMask(swr::AlgoMask mask) {
  const std::vector<AlgoId> ids = swr::IdsFromMask(mask);
  return {ids.begin(), ids.end()};
}

// As the details show it.
std::u16string ModifiedText(const std::u16string& path) {
  const auto time = swr::ToLocalTime(swr::testing::ModifiedTime(path));
  if (!time) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", time->year, time->month, time->day,
                time->hour, time->minute);
  return swr::Utf8ToWide(text);
}

}  // namespace

RandomFiles::RandomFiles() {
  for (size_t i = 0; i < Count; ++i) {
    const std::u16string path =
        tree_.AddFile(Names[i], std::string(static_cast<size_t>(Sizes[i]), 'x'));
    modified_[i] = ModifiedText(path);
  }
  tree_.AddFile(ListName);
}

ReferenceFileRow RandomFiles::RowOf(size_t name) const {
  ReferenceFileRow row = {.path = Path(name), .name = Names[name], .folder = tree_.Root()};
  if (name < Count) {
    row.size = Sizes[name];
    row.modified = modified_[name];
  } else {
    row.status = RowStatus::Failed;
    row.error = 2;
  }
  return row;
}

ReferenceFileRow RandomFiles::RowOfList() const {
  return {.path = ListPath(),
          .name = ListName,
          .folder = tree_.Root(),
          .size = listSize_,
          .modified = ModifiedText(ListPath())};
}

void RandomFiles::WriteList(const std::u16string& text) {
  const std::string bytes = swr::WideToUtf8(text);
  // Some file systems write a replaced file to the disk at once, which takes longer than everything
  // else here.
  swr::testing::RemoveFile(ListPath());
  swr::testing::WriteBytes(ListPath(), bytes);
  listSize_ = bytes.size();
}

RandomWindow::RandomWindow(RandomFiles& files, uint32_t seed, size_t longestList, bool overlaps)
    : files_(files), random_(seed), longestList_(longestList), overlaps_(overlaps) {
  window_.fileIntake.isHeld = overlaps;
  WriteList();
  TakePicture();
}

std::string RandomWindow::Step() {
  window_.desktop.messages.clear();
  window_.desktop.openedAddresses.clear();
  window_.view.redrawn.clear();
  paintsBefore_ = window_.view.listPaints;
  messages_.clear();
  const std::string event = RandomEvent();
  window_.queue.snapshot.active = reference_.workerRunsDroppedJob;
  return event;
}

std::string RandomWindow::RandomEvent() {
  if (!reference_.intakes.empty() && OneIn(4)) return TakeFiles();
  switch (Pick(26)) {
    case 0:
    case 1:
      return AddFiles();
    case 2:
    case 3:
      return LoadList();
    case 4:
      return DropJobs();
    case 5:
    case 6:
      return EditBox();
    case 7:
      return SelectAlgos();
    case 8:
    case 9:
      return SelectRows();
    case 10:
      return Tick();
    case 11:
      return LateResult();
    case 12:
      return CompareTwo();
    case 13:
      return ChangeCase();
    case 14:
      return Signature();
    case 15:
      return Sort();
    case 16:
    case 17:
      return LookUp();
    case 18:
      return UseClipboard();
    case 19:
      return AddListFile();
    case 20:
      return OneIn(4) ? FindStaleEntry() : FollowBannerLink();
    default:
      return Results();
  }
}

DigestBytes RandomWindow::DigestOf(AlgoId id, uint8_t fill) {
  return FilledBytes(swr::GetAlgo(id).digestSize, fill);
}

ReferenceFileRow RandomWindow::WithId(ReferenceFileRow row) {
  row.id = nextId_++;
  return row;
}

std::string RandomWindow::AddFiles() {
  std::vector<ReferenceFileRow> files;
  std::vector<std::u16string> paths;
  for (size_t count = 1 + Pick(3); count > 0; --count) {
    ReferenceFileRow row = files_.RowOf(Pick(RandomFiles::NameCount));
    paths.push_back(row.path);
    files.push_back(overlaps_ ? row : WithId(row));
  }
  if (overlaps_) {
    reference_.StartIntake({.files = std::move(files)});
  } else {
    reference_.AddFiles(std::move(files));
  }
  window_.adding.AddPaths(paths);
  return "files added";
}

// ---- Checksum files.

void RandomWindow::WriteList() {
  listed_.clear();
  std::u16string text;
  // Occasionally it contains only a line that is not a checksum.
  const bool isUseless = OneIn(10);
  for (size_t count = isUseless ? 1 : 1 + Pick(longestList_); count > 0; --count) {
    if (isUseless || OneIn(6)) {
      listed_.emplace_back();
      text += u"not a checksum\n";
      continue;
    }
    ListedLine line = {.name = Pick(RandomFiles::NameCount)};
    const AlgoId algo = PickAlgo();
    const uint8_t fill = PickFill();
    line.claim.bytes = DigestOf(algo, fill);
    const std::u16string hex = FilledHex(line.claim.bytes.size(), fill);
    const std::u16string name = RandomFiles::Names[line.name];
    if (OneIn(2)) {
      line.claim.algos = {algo};
      text += swr::Utf8ToWide(swr::GetAlgo(algo).upperTag) + u" (" + name + u") = " + hex;
    } else {
      line.claim.algos = ReferenceAlgosOfSize(line.claim.bytes.size());
      text += hex + u"  " + name;
    }
    text += u"\n";
    listed_.emplace_back(std::move(line));
  }
  files_.WriteList(text);
}

std::string RandomWindow::LoadList() {
  WriteList();
  const auto running = RunningJob();
  LoadWrittenList();
  ExpectLateResult(running);
  window_.verification.VerifyFile(files_.ListPath());
  return "list loaded";
}

// The checksum file as the reference model reads it.
void RandomWindow::LoadWrittenList() {
  std::vector<ReferenceFileRow> rows;
  std::vector<uint32_t> skipped;
  for (uint32_t number = 1; const std::optional<ListedLine>& line : listed_) {
    if (line) {
      ReferenceFileRow& row = rows.emplace_back(files_.RowOf(line->name));
      if (!overlaps_) row.id = nextId_++;
      row.listed = line->claim;
      row.checksumFile = RandomFiles::ListName;
      row.checksumLine = number;
    } else {
      skipped.push_back(number);
    }
    ++number;
  }
  if (overlaps_) {
    reference_.StartIntake(
        {.files = std::move(rows), .isList = true, .skippedLines = std::move(skipped)});
  } else if (rows.empty()) {
    messages_.push_back(u"No checksums were found in this file.");
  } else {
    reference_.LoadList(std::move(rows), skipped);
  }
}

// The checksum file itself, for which the window then offers to verify the listed files.
std::string RandomWindow::AddListFile() {
  WriteList();
  if (overlaps_) {
    reference_.StartIntake({.files = {files_.RowOfList()}});
  } else {
    reference_.AddFiles({WithId(files_.RowOfList())});
  }
  window_.adding.AddPaths({files_.ListPath()});
  return "a checksum file added";
}

std::string RandomWindow::TakeFiles() {
  const size_t count = 1 + Pick(std::max<size_t>(3, longestList_ / 2));
  const auto running = RunningJob();
  messages_ = reference_.TakeFiles(count, nextId_);
  ExpectLateResult(running);
  window_.LookUpFiles(count);
  return std::to_string(count) + " files looked up";
}

// ---- Jobs and their results.

// A job that is dropped while it runs leaves the worker busy, and delivers a late result.
std::optional<HashJob> RandomWindow::RunningJob() const {
  if (window_.queue.jobs.empty()) return std::nullopt;
  return window_.queue.jobs.front();
}

void RandomWindow::ExpectLateResult(const std::optional<HashJob>& running) {
  if (!running) return;
  const ReferenceJob job = {running->rowId, SetOfMask(running->mask)};
  if (std::ranges::find(reference_.jobs, job) != reference_.jobs.end()) return;
  late_.push_back(*running);
  reference_.workerRunsDroppedJob = true;
  window_.queue.snapshot.active = true;
}

std::string RandomWindow::DropJobs() {
  const auto running = RunningJob();
  if (OneIn(2)) {
    reference_.Cancel();
    ExpectLateResult(running);
    window_.commands.Run(IDC_CANCEL);
    return "cancelled";
  }
  if (OneIn(6)) {
    reference_.Clear();
    ExpectLateResult(running);
    window_.commands.Run(ID_CLEAR_LIST);
    return "cleared";
  }
  std::set<size_t> chosen;
  for (size_t i = 0; i < reference_.rows.size(); ++i) {
    if (OneIn(3)) chosen.insert(i);
  }
  reference_.Remove(chosen);
  ExpectLateResult(running);
  window_.view.selected.assign(chosen.begin(), chosen.end());
  window_.commands.Run(ID_REMOVE);
  return "rows removed";
}

std::string RandomWindow::SelectAlgos() {
  AlgoSet chosen = reference_.selectedAlgos;
  if (OneIn(3)) chosen.clear();
  for (size_t count = Pick(3); count > 0; --count) {
    const AlgoId algo = PickAlgo();
    if (chosen.erase(algo) == 0) chosen.insert(algo);
  }
  window_.algorithms.Select(MaskOfSet(chosen));
  reference_.SelectAlgos(std::move(chosen));
  return "algorithms selected";
}

// The job of a row, of a row that has been removed, or none.
void RandomWindow::PickCurrentJob() {
  WorkerSnapshot& snapshot = window_.queue.snapshot;
  snapshot.currentRowId = 0;
  snapshot.currentPath.clear();
  if (OneIn(4)) return;
  if (OneIn(4) || window_.queue.jobs.empty()) {
    snapshot.currentPath = files_.Path(Pick(RandomFiles::NameCount));
    const std::vector<size_t> rows = window_.rows.IndexesOfPath(snapshot.currentPath);
    if (!rows.empty() && !OneIn(4))
      snapshot.currentRowId = window_.rows[rows[Pick(rows.size())]].id;
  } else {
    snapshot.currentRowId = window_.queue.jobs.front().rowId;
    snapshot.currentPath = window_.queue.jobs.front().path->Text();
  }
}

std::string RandomWindow::Tick() {
  if (OneIn(2)) reference_.workerRunsDroppedJob = false;
  window_.queue.snapshot.active = reference_.workerRunsDroppedJob;
  PickCurrentJob();
  reference_.Tick(window_.queue.snapshot.currentPath);
  window_.intake.OnTimer();
  return "tick";
}

std::pair<ReferenceResult, swr::HashOutcome> RandomWindow::ResultOf(const HashJob& job,
                                                                    bool isLate) {
  ReferenceResult result = {.rowId = job.rowId, .algos = SetOfMask(job.mask)};
  swr::HashOutcome outcome;
  if (isLate ? OneIn(2) : OneIn(10)) {
    result.cancelled = outcome.cancelled = true;
  } else if (OneIn(8)) {
    constexpr uint32_t errors[] = {2, 3, 5, 32};
    result.error = outcome.error = errors[Pick(std::size(errors))];
  } else {
    for (const AlgoId id : result.algos) {
      const DigestBytes bytes = DigestOf(id, PickFill());
      result.digests[id] = bytes;
      swr::DigestSlot& slot = outcome.digests.Make(swr::IndexOf(id));
      slot.present = true;
      slot.length = static_cast<uint8_t>(bytes.size());
      std::ranges::copy(bytes, slot.bytes.begin());
    }
    result.size = outcome.bytesRead = OneIn(6) ? 1 + Pick(900) : job.size;
    result.changed = outcome.changed = OneIn(6);
  }
  return {std::move(result), std::move(outcome)};
}

std::string RandomWindow::Results() {
  if (window_.queue.jobs.empty()) return OneIn(2) ? EditBox() : SelectAlgos();
  std::vector<ReferenceResult> results;
  std::vector<std::pair<HashJob, swr::HashOutcome>> reports;
  const size_t most = std::max<size_t>(3, longestList_ / 10);
  for (size_t count = 1 + Pick(most); count > 0 && !window_.queue.jobs.empty(); --count) {
    const auto index = static_cast<std::ptrdiff_t>(OneIn(3) ? Pick(window_.queue.jobs.size()) : 0);
    const HashJob job = window_.queue.jobs[static_cast<size_t>(index)];
    window_.queue.jobs.erase(window_.queue.jobs.begin() + index);
    reference_.jobs.erase(reference_.jobs.begin() + index);
    auto [result, outcome] = ResultOf(job, false);
    results.push_back(std::move(result));
    reports.emplace_back(job, std::move(outcome));
  }
  const std::string event = std::to_string(results.size()) + " results";
  Deliver(results, std::move(reports));
  return event;
}

std::string RandomWindow::LateResult() {
  if (late_.empty()) return Results();
  const HashJob job = late_.back();
  late_.pop_back();
  reference_.workerRunsDroppedJob = false;
  window_.queue.snapshot.active = false;
  auto [result, outcome] = ResultOf(job, true);
  std::vector<std::pair<HashJob, swr::HashOutcome>> reports;
  reports.emplace_back(job, std::move(outcome));
  Deliver({result}, std::move(reports));
  return "a late result";
}

void RandomWindow::Deliver(const std::vector<ReferenceResult>& results,
                           std::vector<std::pair<HashJob, swr::HashOutcome>> reports) {
  PickCurrentJob();
  reference_.TakeResults(results, window_.queue.snapshot.currentPath);
  if (const auto answer = reference_.TakeComparison()) messages_.push_back(*answer);
  window_.ReportAll(std::move(reports));
}

std::string RandomWindow::Signature() {
  const uint64_t id = 1 + Pick(static_cast<size_t>(nextId_));
  reference_.TakeSignature(id, u"Not signed");
  window_.details.OnSignatureResult(id, {.state = swr::SignatureState::NotSigned});
  return "a signature checked";
}

}  // namespace app::testing
