// The window against its rules said from scratch: whatever happens, in whatever order, the Status
// column, the colours, the result line, the details and the jobs are what the rules say, and what
// is on the screen is up to date.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/local_time.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/reference_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::testing::TempTree;

constexpr size_t FileCount = 5;
constexpr size_t NameCount = 7;
constexpr const char16_t* Names[NameCount] = {u"f0", u"f1", u"f2", u"f3", u"f4", u"m0", u"m1"};
constexpr uint64_t Sizes[FileCount] = {1, 1, 2, 3, 1};

swr::AlgoMask MaskOfSet(const AlgoSet& algos) {
  swr::AlgoMask mask = 0;
  for (const AlgoId id : algos) mask |= swr::MaskOf(id);
  return mask;
}

AlgoSet SetOfMask(swr::AlgoMask mask) {
  const std::vector<AlgoId> ids = swr::IdsFromMask(mask);
  return {ids.begin(), ids.end()};
}

// Files of which nothing but names, sizes and times is ever looked at.
struct Files {
  Files() {
    for (size_t i = 0; i < FileCount; ++i) {
      const std::u16string path =
          tree.AddFile(Names[i], std::string(static_cast<size_t>(Sizes[i]), 'x'));
      if (const auto time = swr::ToLocalTime(swr::testing::ModifiedTime(path))) {
        char text[64];
        std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", time->year, time->month,
                      time->day, time->hour, time->minute);
        modified[i] = swr::Utf8ToWide(text);
      }
    }
  }

  TempTree tree;
  std::u16string modified[FileCount];
};

class RandomRun {
 public:
  // Checksum files have up to `longestList` lines, and results come in batches of up to a tenth of
  // that, or of three.
  RandomRun(Files& files, uint32_t seed, size_t longestList = 3)
      : files_(files), random_(seed), longestList_(longestList) {
    TakePicture();
  }

  // Lets something happen to both. The result says what.
  std::string Step() {
    window_.desktop.messages.clear();
    window_.view.redrawn.clear();
    paintsBefore_ = window_.view.listPaints;
    message_.reset();
    const std::string event = Happen();
    window_.queue.snapshot.active = reference_.workerLingers;
    return event;
  }

  void Check() {
    Repaint();
    ASSERT_EQ(window_.main.rows.size(), reference_.rows.size());
    EXPECT_EQ(window_.view.rowCount, reference_.rows.size());
    for (size_t i = 0; i < reference_.rows.size(); ++i) {
      SCOPED_TRACE("row " + std::to_string(i));
      const ReferenceFileRow& row = reference_.rows[i];
      EXPECT_EQ(window_.main.rows[i]->id, row.id);
      EXPECT_EQ(window_.StatusCell(i), reference_.StatusCell(row));
      EXPECT_EQ(window_.main.TintOf(i), reference_.Tint(row));
      EXPECT_EQ(picture_[i], Painted(i)) << "the screen is out of date";
    }
    EXPECT_EQ(window_.Result(), reference_.Line());
    EXPECT_EQ(window_.view.details, reference_.shownDetails);
    EXPECT_EQ(Jobs(), reference_.jobs);
    if (message_) {
      ASSERT_EQ(window_.desktop.messages.size(), 1u);
      EXPECT_EQ(window_.desktop.messages[0].mainInstruction, *message_);
    } else {
      EXPECT_TRUE(window_.desktop.messages.empty());
    }
  }

 private:
  size_t Pick(size_t count) { return static_cast<size_t>(random_() % count); }
  bool OneIn(size_t count) { return Pick(count) == 0; }
  uint8_t PickFill() { return static_cast<uint8_t>(1 + Pick(3)); }
  AlgoId PickAlgo() { return static_cast<AlgoId>(Pick(swr::AlgoCount)); }
  static DigestBytes DigestOf(AlgoId id, uint8_t fill) {
    return FilledBytes(swr::GetAlgo(id).digestSize, fill);
  }

  std::string Happen() {
    switch (Pick(20)) {
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
        reference_.uppercase = !reference_.uppercase;
        reference_.shownDetails = reference_.Details();
        window_.main.OnCommand(ID_UPPERCASE);
        return "uppercase";
      case 14:
        return Signature();
      default:
        return Results();
    }
  }

  ReferenceFileRow MakeRow(size_t name) {
    ReferenceFileRow row = {.id = nextId_++,
                            .path = files_.tree.Path(Names[name]),
                            .name = Names[name],
                            .folder = files_.tree.Root()};
    if (name < FileCount) {
      row.size = Sizes[name];
      row.modified = files_.modified[name];
    } else {
      row.status = RowStatus::Failed;
      row.error = 2;
    }
    return row;
  }

  std::string AddFiles() {
    std::vector<ReferenceFileRow> files;
    std::vector<std::u16string> paths;
    for (size_t count = 1 + Pick(3); count > 0; --count) {
      files.push_back(MakeRow(Pick(NameCount)));
      paths.push_back(files.back().path);
    }
    reference_.AddFiles(std::move(files));
    window_.main.AddPaths(paths);
    return "files added";
  }

  std::string LoadList() {
    const std::u16string path = files_.tree.Path(u"list");
    std::vector<ReferenceFileRow> listed;
    std::u16string text;
    const auto count = static_cast<uint32_t>(1 + Pick(longestList_));
    for (uint32_t line = 1; line <= count; ++line) {
      ReferenceFileRow row = MakeRow(Pick(NameCount));
      const AlgoId algo = PickAlgo();
      const uint8_t fill = PickFill();
      ReferenceClaim claim = {.bytes = DigestOf(algo, fill)};
      const std::u16string hex = FilledHex(claim.bytes.size(), fill);
      if (OneIn(2)) {
        claim.algos = {algo};
        text += swr::Utf8ToWide(swr::GetAlgo(algo).upperTag) + u" (" + row.name + u") = " + hex;
      } else {
        claim.algos = ReferenceAlgosOfSize(claim.bytes.size());
        text += hex + u"  " + row.name;
      }
      text += u"\n";
      row.listed = claim;
      row.checksumFile = u"list";
      row.checksumLine = line;
      listed.push_back(std::move(row));
    }
    swr::testing::WriteBytes(path, swr::WideToUtf8(text));
    const auto running = RunningJob();
    reference_.LoadList(std::move(listed));
    LeaveBehind(running);
    window_.main.VerifyChecksumFile(path);
    return "list loaded";
  }

  // What a job that is dropped while it runs leaves behind: a worker at work, and a late result.
  std::optional<HashJob> RunningJob() const {
    if (window_.queue.jobs.empty()) return std::nullopt;
    return window_.queue.jobs.front();
  }
  void LeaveBehind(const std::optional<HashJob>& running) {
    if (!running) return;
    const ReferenceJob job = {running->rowId, SetOfMask(running->mask)};
    if (std::ranges::find(reference_.jobs, job) != reference_.jobs.end()) return;
    late_.push_back(*running);
    reference_.workerLingers = true;
    window_.queue.snapshot.active = true;
  }

  std::string DropJobs() {
    const auto running = RunningJob();
    if (OneIn(2)) {
      reference_.Cancel();
      LeaveBehind(running);
      window_.main.OnCommand(IDC_CANCEL);
      return "cancelled";
    }
    if (OneIn(6)) {
      reference_.Clear();
      LeaveBehind(running);
      window_.main.OnCommand(ID_CLEAR_LIST);
      return "cleared";
    }
    std::set<size_t> chosen;
    for (size_t i = 0; i < reference_.rows.size(); ++i) {
      if (OneIn(3)) chosen.insert(i);
    }
    reference_.Remove(chosen);
    LeaveBehind(running);
    window_.view.selected.assign(chosen.begin(), chosen.end());
    window_.main.OnCommand(ID_REMOVE);
    return "rows removed";
  }

  std::string EditBox() {
    ReferenceBox box;
    std::u16string text;
    if (OneIn(5)) {
      text = u" \t";
    } else if (OneIn(8)) {
      box.isEmpty = false;
      text = u"rubbish";
    } else if (OneIn(4)) {
      box = reference_.box;
      text = window_.view.expectedText + u"\n";
    } else {
      box.isEmpty = false;
      const AlgoId algo = PickAlgo();
      const uint8_t fill = PickFill();
      ReferenceClaim claim = {.bytes = DigestOf(algo, fill)};
      text = FilledHex(claim.bytes.size(), fill);
      claim.isNamed = OneIn(3);
      claim.algos = claim.isNamed ? std::vector{algo} : ReferenceAlgosOfSize(claim.bytes.size());
      if (OneIn(2) || claim.isNamed) claim.fileName = Names[Pick(NameCount)];
      if (claim.isNamed) {
        text =
            swr::Utf8ToWide(swr::GetAlgo(algo).upperTag) + u" (" + claim.fileName + u") = " + text;
      } else if (!claim.fileName.empty()) {
        text += u"  " + claim.fileName;
      }
      box.claim = claim;
    }
    reference_.EditBox(box);
    window_.view.SetExpectedText(text);
    return "box: " + swr::WideToUtf8(text);
  }

  std::string SelectAlgos() {
    AlgoSet chosen = reference_.selectedAlgos;
    if (OneIn(3)) chosen.clear();
    for (size_t count = Pick(3); count > 0; --count) {
      const AlgoId algo = PickAlgo();
      if (chosen.erase(algo) == 0) chosen.insert(algo);
    }
    window_.main.SetAlgoMask(MaskOfSet(chosen));
    reference_.SelectAlgos(std::move(chosen));
    return "algorithms selected";
  }

  std::string SelectRows() {
    std::set<size_t> chosen;
    const size_t count = reference_.rows.size();
    for (size_t wanted = std::min(count, Pick(3)); wanted > 0; --wanted) {
      chosen.insert(Pick(count));
    }
    Select(std::move(chosen));
    return "rows selected";
  }

  void Select(std::set<size_t> chosen) {
    window_.view.selected.assign(chosen.begin(), chosen.end());
    window_.main.RefreshDetails();
    reference_.selection = std::move(chosen);
    reference_.shownDetails = reference_.Details();
  }

  // The file that the worker is seen at: mostly the first in its queue.
  std::u16string PickCurrentPath() {
    if (OneIn(4)) return u"";
    if (OneIn(4) || window_.queue.jobs.empty()) return files_.tree.Path(Names[Pick(NameCount)]);
    return window_.queue.jobs.front().path;
  }

  std::string Tick() {
    if (OneIn(2)) reference_.workerLingers = false;
    window_.queue.snapshot.active = reference_.workerLingers;
    window_.queue.snapshot.currentPath = PickCurrentPath();
    reference_.Tick(window_.queue.snapshot.currentPath);
    window_.main.OnProgressTimer();
    return "tick";
  }

  // How a job ends, for both sides.
  std::pair<ReferenceResult, swr::HashOutcome> EndOf(const HashJob& job, bool isLate) {
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

  std::string Results() {
    if (window_.queue.jobs.empty()) return OneIn(2) ? EditBox() : SelectAlgos();
    std::vector<ReferenceResult> results;
    std::vector<std::pair<HashJob, swr::HashOutcome>> reports;
    const size_t most = std::max<size_t>(3, longestList_ / 10);
    for (size_t count = 1 + Pick(most); count > 0 && !window_.queue.jobs.empty(); --count) {
      const auto index =
          static_cast<std::ptrdiff_t>(OneIn(3) ? Pick(window_.queue.jobs.size()) : 0);
      const HashJob job = window_.queue.jobs[static_cast<size_t>(index)];
      window_.queue.jobs.erase(window_.queue.jobs.begin() + index);
      reference_.jobs.erase(reference_.jobs.begin() + index);
      auto [result, outcome] = EndOf(job, false);
      results.push_back(std::move(result));
      reports.emplace_back(job, std::move(outcome));
    }
    const std::string event = std::to_string(results.size()) + " results";
    Deliver(results, std::move(reports));
    return event;
  }

  std::string LateResult() {
    if (late_.empty()) return Results();
    const HashJob job = late_.back();
    late_.pop_back();
    reference_.workerLingers = false;
    window_.queue.snapshot.active = false;
    auto [result, outcome] = EndOf(job, true);
    std::vector<std::pair<HashJob, swr::HashOutcome>> reports;
    reports.emplace_back(job, std::move(outcome));
    Deliver({result}, std::move(reports));
    return "a late result";
  }

  void Deliver(const std::vector<ReferenceResult>& results,
               std::vector<std::pair<HashJob, swr::HashOutcome>> reports) {
    window_.queue.snapshot.currentPath = PickCurrentPath();
    reference_.TakeResults(results, window_.queue.snapshot.currentPath);
    message_ = reference_.TakeComparison();
    window_.ReportAll(std::move(reports));
  }

  std::string Signature() {
    const uint64_t id = 1 + Pick(static_cast<size_t>(nextId_));
    reference_.TakeSignature(id, u"Not signed");
    window_.main.OnSignatureResult(id, {.state = swr::SignatureState::NotSigned});
    return "a signature checked";
  }

  std::string CompareTwo() {
    const size_t count = reference_.rows.size();
    if (count < 2) return AddFiles();
    const size_t anchor = Pick(count);
    Select({anchor, (anchor + 1 + Pick(count - 1)) % count});
    const size_t first = *reference_.selection.begin();
    const size_t second = *reference_.selection.rbegin();
    if (reference_.CompareTwo(first, second)) {
      message_ = u"The two files are different.";
    } else {
      message_ = reference_.TakeComparison();
    }
    window_.main.OnCommand(ID_CTX_COMPARE);
    return "two files compared";
  }

  using Look = std::pair<std::u16string, RowTint>;
  Look Painted(size_t row) const { return {window_.StatusCell(row), window_.main.TintOf(row)}; }
  void TakePicture() {
    picture_.clear();
    for (size_t i = 0; i < window_.main.rows.size(); ++i) picture_.push_back(Painted(i));
  }
  // Paints what the window has asked to be painted, and no more.
  void Repaint() {
    if (window_.view.listPaints != paintsBefore_) {
      TakePicture();
      return;
    }
    for (const size_t row : window_.view.redrawn) picture_.at(row) = Painted(row);
  }

  std::deque<ReferenceJob> Jobs() const {
    std::deque<ReferenceJob> jobs;
    for (const HashJob& job : window_.queue.jobs) jobs.push_back({job.rowId, SetOfMask(job.mask)});
    return jobs;
  }

  Files& files_;
  std::mt19937 random_;
  const size_t longestList_;
  FakeWindow window_;
  ReferenceWindow reference_;
  uint64_t nextId_ = 1;
  std::vector<HashJob> late_;
  std::vector<Look> picture_;
  int paintsBefore_ = 0;
  std::optional<std::u16string> message_;
};

void ExpectRuns(uint32_t runs, int steps, size_t longestList) {
  Files files;
  for (uint32_t seed = 1; seed <= runs; ++seed) {
    RandomRun run(files, seed, longestList);
    std::string events;
    for (int step = 0; step < steps; ++step) {
      events += run.Step() + "; ";
      run.Check();
      if (::testing::Test::HasFailure()) FAIL() << "seed " << seed << ": " << events;
    }
  }
}

TEST(VerdictModelTest, WhateverHappensAllVerdictsFollowTheRules) { ExpectRuns(600, 50, 3); }

// The running counts of a long list against a reference model that counts from scratch after each
// event.
TEST(VerdictModelTest, SoTheyDoInLongLists) {
  ExpectRuns(40, 60, 60);
  ExpectRuns(3, 60, 2000);
}

}  // namespace
}  // namespace app::testing
