// Predicts what the window of the soak test must show from the actions and the states of its files,
// without looking at the program. Where the result depends on timing (what Cancel stopped in time,
// which of two contents of a file was read), the model knows the possibilities and learns from the
// window which one occurred; the verdict then comes only from the reference model.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/reference_window.h"
#include "tests/ui/soak_test/file_world_win.h"

namespace app::testing {

struct ModelRow {
  size_t file = 0;
  std::optional<ReferenceClaim> listed;
  std::u16string checksumFile;  // its name
  uint32_t checksumLine = 0;
  std::u16string modified;
  uint64_t size = 0;
  bool isSizeUnknown = false;                  // failed after an attempt that may have succeeded
  uint32_t error = 0;                          // why it can't be read; 0 if it can
  std::map<swr::AlgoId, DigestBytes> digests;  // seen in the window
  AlgoSet requested;                           // the digests that it may have
  size_t firstState = 0;                       // the state of its file when the row was added
  bool mayLack = false;         // may lack requested digests: cancelled, or failed and read later
  bool mayBeCancelled = false;  // otherwise it is done
  bool mayLackSearch = false;   // may lack candidates of the box: cancelled, but Done by a late job
  bool mayBeChanged = false;    // may be marked as changed while it was read
};

class WindowModel {
 public:
  // The world must outlive the model.
  explicit WindowModel(const FileWorld& world) : world_(world) {}

  // ---- Events. Add returns the number of rows added.
  size_t Add(const std::vector<size_t>& files);
  void RemovePlainRow(size_t file);
  void LoadList(size_t list);
  void Remove(const std::set<size_t>& indexes);
  void Clear();
  void Cancel();
  void EditBox(ReferenceBox edited);
  void SelectAlgos(AlgoSet chosen);
  void Request(size_t row, swr::AlgoId algo);

  bool HasFile(size_t file) const;
  bool HasRowsOf(size_t list) const;
  const WorldFile& FileOf(const ModelRow& row) const { return world_.Files()[row.file]; }

  std::vector<ModelRow> rows;
  // False when the order of the rows depends on the timing of results or other instances.
  bool isOrderKnown = true;
  // The window has been idle and compared since the last event.
  bool isIdle = true;
  AlgoSet selectedAlgos = {swr::AlgoId::Md5, swr::AlgoId::Sha1, swr::AlgoId::Sha256};
  ReferenceBox box;
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  std::optional<size_t> sortColumn;
  bool sortDescending = false;

 private:
  ModelRow MakeRow(size_t file) const;
  // All digests that the window may have requested from the worker so far.
  void NoteRequested();

  const FileWorld& world_;
};

}  // namespace app::testing
