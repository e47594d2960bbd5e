// What the window of a soak test must show, derived from what was done to it and from the states of
// its files, without looking at the program. Where timing decides (what Cancel still caught, which
// of two contents of a file was read), the model knows the possibilities and learns from the window
// which one happened; the verdict then comes from the reference model alone.
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
  bool isSizeUnknown = false;                  // it failed after a try that may have gone well
  uint32_t error = 0;                          // why it can't be read; 0 while it can
  std::map<swr::AlgoId, DigestBytes> digests;  // seen in the window
  AlgoSet asked;                               // digests that it may have
  size_t firstState = 0;                       // of its file, since it is in the list
  bool mayLack = false;         // digests that were asked for: cancelled, or failed and read later
  bool mayBeCancelled = false;  // or else it is done
  bool mayLackSearch = false;   // of the box's candidates: cancelled, though what is done shows
  bool mayBeChanged = false;    // may say that it changed while it was read
};

class WindowModel {
 public:
  // The world must outlive the model.
  explicit WindowModel(const FileWorld& world) : world_(world) {}

  // ---- What happens.
  // How many rows this adds.
  size_t Add(const std::vector<size_t>& files);
  void ForgetPlainRow(size_t file);
  void LoadList(size_t list);
  void Remove(const std::set<size_t>& indexes);
  void Clear();
  void Cancel();
  void EditBox(ReferenceBox edited);
  void SelectAlgos(AlgoSet chosen);
  void AskFor(size_t row, swr::AlgoId algo);

  bool HasFile(size_t file) const;
  bool HasRowsOf(size_t list) const;
  const WorldFile& FileOf(const ModelRow& row) const { return world_.Files()[row.file]; }

  std::vector<ModelRow> rows;
  // False when the order of the rows depends on the timing of results or other instances.
  bool isOrderKnown = true;
  // The window was idle and was compared since the last event.
  bool isAtRest = true;
  AlgoSet selectedAlgos = {swr::AlgoId::Md5, swr::AlgoId::Sha1, swr::AlgoId::Sha256};
  ReferenceBox box;
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  std::optional<size_t> sortColumn;
  bool sortDescending = false;

 private:
  ModelRow MakeRow(size_t file) const;
  // Everything that the window may have asked the worker for by now.
  void NoteAsked();

  const FileWorld& world_;
};

}  // namespace app::testing
