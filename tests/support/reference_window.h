// The rules of rows and verdicts once more, said as plainly as can be: nothing is indexed, shared
// or remembered, and everything is worked out from scratch whenever it is asked for. A test lets
// the same things happen to this and to the real MainWindow, and compares what there is to be seen.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/window/list_row.h"
#include "app/window/result_line.h"
#include "app/window/row_verdict.h"
#include "swr/hash/algorithms.h"

namespace app::testing {

using DigestBytes = std::vector<uint8_t>;
using AlgoSet = std::set<swr::AlgoId>;

// The algorithms that a digest of this length may belong to, in the order of trial.
std::vector<swr::AlgoId> ReferenceAlgosOfSize(size_t bytes);
std::u16string ReferenceHex(const DigestBytes& bytes, bool uppercase);

// A digest that somebody claims, and the algorithms that it may belong to in the order of trial.
struct ReferenceClaim {
  DigestBytes bytes;
  std::vector<swr::AlgoId> algos;
  bool isNamed = false;
  std::u16string fileName;  // that came with it

  bool operator==(const ReferenceClaim&) const = default;
};

struct ReferenceFileRow {
  uint64_t id = 0;
  std::u16string path;
  std::u16string name;
  std::u16string folder;
  uint64_t size = 0;
  std::u16string modified;  // as the details show it, or nothing
  RowStatus status = RowStatus::Waiting;
  uint32_t error = 0;
  bool changed = false;
  bool isGivenUp = false;  // the user cancelled it, and nothing was asked of it since
  std::map<swr::AlgoId, DigestBytes> digests;
  AlgoSet pending;
  std::optional<ReferenceClaim> listed;  // what a checksum file says
  std::u16string checksumFile;           // its name
  uint32_t checksumLine = 0;
  std::u16string signature = u"Checking...";  // what is said of it
};

struct ReferenceJob {
  uint64_t rowId = 0;
  AlgoSet algos;

  bool operator==(const ReferenceJob&) const = default;
};

struct ReferenceResult {
  uint64_t rowId = 0;
  AlgoSet algos;
  std::map<swr::AlgoId, DigestBytes> digests;
  uint64_t size = 0;
  uint32_t error = 0;
  bool cancelled = false;
  bool changed = false;
};

// What stands in the Expected hash box.
struct ReferenceBox {
  bool isEmpty = true;
  std::optional<ReferenceClaim> claim;  // nothing when it is no hash
};

class ReferenceWindow {
 public:
  // ---- What happens.
  void AddFiles(std::vector<ReferenceFileRow> files);
  void LoadList(std::vector<ReferenceFileRow> listed);
  // In both the worker is seen at work on this path.
  void TakeResults(const std::vector<ReferenceResult>& results, const std::u16string& currentPath);
  void Tick(const std::u16string& currentPath);
  void Remove(const std::set<size_t>& indexes);
  void Clear();
  void Cancel();
  void EditBox(ReferenceBox edited);
  void SelectAlgos(AlgoSet chosen);
  void TakeSignature(uint64_t rowId, const std::u16string& words);
  // True when the sizes alone decide.
  bool CompareTwo(size_t first, size_t second);

  // ---- What is to be seen.
  std::u16string StatusCell(const ReferenceFileRow& row) const;
  RowTint Tint(const ReferenceFileRow& row) const;
  ResultLine Line() const;
  std::u16string Details() const;
  // The instruction of the message that a comparison of two files has come to, if it has just now.
  std::optional<std::u16string> TakeComparison();

  std::vector<ReferenceFileRow> rows;
  std::deque<ReferenceJob> jobs;
  AlgoSet selectedAlgos = {swr::AlgoId::Md5, swr::AlgoId::Sha1, swr::AlgoId::Sha256};
  ReferenceBox box;
  std::set<size_t> selection;
  bool uppercase = false;
  bool workerLingers = false;  // it still holds a file of a job that was dropped
  // Of several selected rows the sum stays as it was when results come in.
  std::u16string shownDetails;

 private:
  enum class Outcome { NotChecked, Pending, Match, Mismatch, Missing, Unreadable };
  struct Verdict {
    Outcome outcome;
    swr::AlgoId algo = {};
  };
  static Verdict VerdictOf(const ReferenceFileRow& row, const ReferenceClaim& claim);
  bool Ask(ReferenceFileRow& row, const AlgoSet& algos);
  void AskAll();
  void DropJobsOf(uint64_t rowId);
  bool IsActive() const { return workerLingers || !jobs.empty(); }
  void MarkHashing(const std::u16string& currentPath);
  // Has the rows hashed that the value in the box may need.
  void Widen(bool isNewValue);
  ResultLine BoxLine(const ReferenceClaim& claim) const;
  ResultLine Summary() const;
  std::u16string OneRowDetails(const ReferenceFileRow& row) const;
  ReferenceFileRow* Find(uint64_t id);

  std::optional<std::pair<uint64_t, uint64_t>> compared_;
};

}  // namespace app::testing
