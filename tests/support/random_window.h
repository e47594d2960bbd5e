// A window with fakes and a reference model that receive the same random events. After each event,
// everything visible must be equal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_window.h"
#include "tests/support/reference_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {

// The files of random windows; only their names, sizes and times are used. There is also one
// checksum file, which is rewritten for each use.
class RandomFiles {
 public:
  static constexpr size_t Count = 5;
  static constexpr size_t NameCount = 7;  // including files that do not exist
  static constexpr const char16_t* Names[NameCount] = {u"f0", u"f1", u"f2", u"f3",
                                                       u"f4", u"m0", u"m1"};
  // The name of the checksum file, which implies no algorithm.
  static constexpr const char16_t* ListName = u"list.digests";

  RandomFiles();

  std::u16string Path(size_t name) const { return tree_.Path(Names[name]); }
  std::u16string ListPath() const { return tree_.Path(ListName); }
  // A new row for this file, with the fields that come from the file.
  ReferenceFileRow RowOf(size_t name) const;
  ReferenceFileRow RowOfList() const;
  void WriteList(const std::u16string& text);

 private:
  swr::testing::TempTree tree_;
  std::u16string modified_[Count];
  uint64_t listSize_ = 0;
};

class RandomWindow {
 public:
  // Checksum files have up to `longestList` lines, and results come in batches of up to a tenth of
  // that, or up to three if that is more. With `overlaps`, files are looked up while other things
  // happen. The files must outlive the window.
  RandomWindow(RandomFiles& files, uint32_t seed, size_t longestList, bool overlaps);

  // Applies a random event to both. Returns a description of it.
  std::string Step();
  // Fails the current GoogleTest test if they differ.
  void Check();

 private:
  // One line of the checksum file; nothing for a line that is not a checksum.
  struct ListedLine {
    size_t name = 0;
    ReferenceClaim claim;
  };
  using ListedLines = std::vector<std::optional<ListedLine>>;

  // random_window.cpp: random choices, and events that concern rows.
  size_t Pick(size_t count) { return static_cast<size_t>(random_() % count); }
  bool OneIn(size_t count) { return Pick(count) == 0; }
  uint8_t PickFill() { return static_cast<uint8_t>(1 + Pick(3)); }
  swr::AlgoId PickAlgo() { return static_cast<swr::AlgoId>(Pick(swr::AlgoCount)); }
  static DigestBytes DigestOf(swr::AlgoId id, uint8_t fill);
  std::string RandomEvent();
  ReferenceFileRow WithId(ReferenceFileRow row);
  std::string AddFiles();
  void WriteList();
  std::string LoadList();
  void LoadWrittenList();
  std::string AddListFile();
  std::string TakeFiles();
  std::optional<HashJob> RunningJob() const;
  void ExpectLateResult(const std::optional<HashJob>& running);
  std::string DropJobs();
  std::string SelectAlgos();
  // The file that the worker appears to read: usually the first in its queue.
  void PickCurrentJob();
  std::string Tick();
  // A random result of a job, for both.
  std::pair<ReferenceResult, swr::HashOutcome> ResultOf(const HashJob& job, bool isLate);
  std::string Results();
  std::string LateResult();
  void Deliver(const std::vector<ReferenceResult>& results,
               std::vector<std::pair<HashJob, swr::HashOutcome>> reports);
  std::string Signature();

  // random_window_desk.cpp: what the user does with the rows, and the comparison.
  std::string SelectRows();
  void Select(std::set<size_t> chosen);
  std::string Sort();
  std::string LookUp();
  std::string CompareTwo();
  std::string ChangeCase();
  ReferenceBox PickBox();
  std::string EditBox();
  std::string UseClipboard();
  std::string FindStaleEntry();
  std::string FollowBannerLink();
  // A row as it is painted.
  struct Look {
    std::u16string name;
    std::u16string status;
    RowTint tint = RowTint::None;

    bool operator==(const Look&) const = default;
  };
  Look Painted(size_t row) const;
  void TakePicture();
  // Repaints only what the window has invalidated.
  void Repaint();
  std::deque<ReferenceJob> Jobs() const;
  ReferenceEntry EntryOfWindow() const;

  RandomFiles& files_;
  std::mt19937 random_;
  const size_t longestList_;
  const bool overlaps_;
  FakeWindow window_;
  ReferenceWindow reference_;
  uint64_t nextId_ = 1;
  ListedLines listed_;         // the content of the checksum file
  std::vector<HashJob> late_;  // dropped while they ran; their results are still pending
  std::vector<Look> picture_;
  int paintsBefore_ = 0;
  std::vector<std::u16string> messages_;  // the instructions of the messages to be expected
};

}  // namespace app::testing
