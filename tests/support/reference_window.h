// The reference model of the window: the rules of rows and verdicts in their simplest form. Nothing
// is indexed, shared or cached; everything is computed from scratch on demand. A test applies the
// same events to this model and to the real window, and compares what is visible.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/rows/row.h"
#include "app/verdicts/result_line.h"
#include "app/verdicts/row_verdict.h"
#include "swr/hash/algorithms.h"

namespace app::testing {

using DigestBytes = std::vector<uint8_t>;
using AlgoSet = std::set<swr::AlgoId>;

// The algorithms that a digest of this length may belong to, in the order of comparison.
std::vector<swr::AlgoId> ReferenceAlgosOfSize(size_t bytes);
std::u16string ReferenceHex(const DigestBytes& bytes, bool uppercase);

// An expected digest, and the algorithms that it may belong to, in the order of comparison.
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
  std::u16string modified;  // as shown in the details, or empty
  RowStatus status = RowStatus::Waiting;
  uint32_t error = 0;
  bool changed = false;
  bool cancelledByUser = false;  // the user cancelled it, and nothing was requested since
  std::map<swr::AlgoId, DigestBytes> digests;
  AlgoSet pending;
  std::optional<ReferenceClaim> listed;  // from a checksum file
  std::u16string checksumFile;           // its name
  uint32_t checksumLine = 0;
  std::u16string signature = u"Checking...";  // as shown in the details
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

// Files that are being looked up: added files, or those that a checksum file lists.
struct ReferenceIntake {
  std::vector<ReferenceFileRow> files;  // not arrived yet; without ids
  bool isList = false;
  std::vector<uint32_t> skippedLines;  // of a list
  size_t given = 0;                    // number of requested files
  bool isCancelled = false;
  bool hasBegun = false;  // the first file has arrived
  bool hasRows = false;
  std::set<std::u16string> removed;  // paths in lower case that the user has removed meanwhile
  std::optional<ReferenceFileRow> offered;  // a checksum file that was added alone
};

// The content of the Expected hash box.
struct ReferenceBox {
  bool isEmpty = true;
  std::optional<ReferenceClaim> claim;  // nothing when it is not a hash
  std::u16string text;                  // as entered; only where a test uses it
};

// A text that the user copied in another program.
struct ReferenceCopy {
  std::u16string text;
  ReferenceBox box;  // the box after this text is pasted
};

enum class ReferenceBanner { None, Clipboard, ChecksumFileOffer, StaleEntries, SkippedLines };

// The copy that the entry in Explorer's menu starts.
enum class ReferenceEntry { None, MissingCopy, ThisCopy };

class ReferenceWindow {
 public:
  // ---- Events.
  void AddFiles(std::vector<ReferenceFileRow> files);
  // The numbers are those of the lines that are not checksums.
  void LoadList(std::vector<ReferenceFileRow> listed, const std::vector<uint32_t>& skippedLines);
  // The same for files that arrive in batches.
  void StartIntake(ReferenceIntake intake);
  // Takes this many further files; the end of an intake counts as one. Each row gets the next id.
  // Returns the instructions of the messages that are shown.
  std::vector<std::u16string> TakeFiles(size_t count, uint64_t& nextId);
  // The worker is reading this path.
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
  // A click on the heading of the column.
  void SortBy(const std::u16string& heading);
  // For the one selected row.
  void LookUp();
  // Another program copies a text; the window becomes active; its Paste button is clicked.
  void Copy(ReferenceCopy copied);
  void Activate();
  void Paste();
  // The entry in Explorer's menu refers to a copy that no longer exists.
  void FindStaleEntry();
  // Any link of the banner. Of the offer of a checksum file this only removes the file's own row;
  // LoadList does the rest.
  void FollowBannerLink(const std::u16string& link);

  // ---- What is visible.
  std::u16string StatusCell(const ReferenceFileRow& row) const;
  RowTint Tint(const ReferenceFileRow& row) const;
  // By the heading of its column.
  std::u16string Cell(const ReferenceFileRow& row, const std::u16string& heading) const;
  // A lookup does not change the line, which stays until the next event.
  ResultLine Line() const { return heldLine_ ? *heldLine_ : LineOfNow(); }
  // Nothing while files are hashed, because then it depends on the worker's progress.
  std::optional<std::u16string> IdleStatus() const;
  std::optional<std::u16string> BannerText() const;
  std::u16string Details() const;
  // The instruction of the message of a comparison of two files that has just been answered, if
  // any.
  std::optional<std::u16string> TakeComparison();
  // The digest whose page a lookup has just opened, if any.
  std::optional<DigestBytes> TakeOpenedPage();

  std::vector<ReferenceFileRow> rows;
  std::deque<ReferenceJob> jobs;
  std::deque<ReferenceIntake> intakes;
  AlgoSet selectedAlgos = {swr::AlgoId::Md5, swr::AlgoId::Sha1, swr::AlgoId::Sha256};
  ReferenceBox box;
  std::set<size_t> selection;
  bool uppercase = false;
  ReferenceBanner banner = ReferenceBanner::None;
  std::u16string offeredFile;  // while the banner offers to verify what a checksum file lists
  ReferenceEntry entry = ReferenceEntry::None;
  bool workerRunsDroppedJob = false;  // it is still busy with a job that was dropped
  // The total of several selected rows is not updated when results arrive.
  std::u16string shownDetails;

 private:
  enum class Outcome { NotChecked, Pending, Match, Mismatch, Missing, Unreadable };
  struct Verdict {
    Outcome outcome;
    swr::AlgoId algo = {};
  };
  static Verdict VerdictOf(const ReferenceFileRow& row, const ReferenceClaim& claim);
  bool Queue(ReferenceFileRow& row, const AlgoSet& algos);
  void QueueAll();
  void DropJobsOf(uint64_t rowId);
  void TakeAdded(ReferenceIntake& intake, ReferenceFileRow file);
  void TakeListed(ReferenceIntake& intake, ReferenceFileRow file);
  std::optional<std::u16string> EndIntake();
  void CancelIntakes();
  void RememberRemoved(const ReferenceFileRow& row);
  void RemovePlainRow(const std::u16string& path);
  void FinishLookUp(const ReferenceFileRow& row);
  void OfferToVerify(const ReferenceFileRow& row);
  void ReportSkippedLines(const std::vector<uint32_t>& lines);
  void ShowBanner(ReferenceBanner kind, const std::u16string& text);
  void HideBanner();
  bool IsActive() const { return workerRunsDroppedJob || !jobs.empty(); }
  bool IsListOpen() const;
  void MarkHashing(const std::u16string& currentPath);
  // Queues the candidates of the value in the box.
  void Widen(bool isNewValue);
  ResultLine LineOfNow() const;
  ResultLine BoxLine(const ReferenceClaim& claim) const;
  ResultLine Summary() const;
  std::u16string OneRowDetails(const ReferenceFileRow& row) const;
  ReferenceFileRow* Find(uint64_t id);

  std::optional<std::pair<uint64_t, uint64_t>> compared_;
  std::optional<std::u16string> sortHeading_;
  bool descending_ = false;
  std::optional<uint64_t> lookedUp_;  // a row that waits for its digest
  std::optional<DigestBytes> openedPage_;
  std::optional<ResultLine> heldLine_;
  std::optional<ReferenceCopy> copied_;
  bool isCopyNew_ = false;    // the window has not checked it yet
  std::u16string dismissed_;  // the text whose offer the user dismissed
  std::u16string bannerText_;
  ReferenceCopy offeredCopy_;  // while the banner offers to compare it
};

}  // namespace app::testing
