#include "tests/ui/soak_test/comparison.h"

#include <algorithm>
#include <map>
#include <utility>

#include "swr/text/display_text.h"
#include "swr/text/encoding.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using Texts = std::vector<std::u16string>;

constexpr size_t NameColumn = 0;
constexpr size_t FolderColumn = 1;
constexpr size_t SizeColumn = 2;
constexpr size_t FirstDigestColumn = 3;

std::string Utf8(const std::u16string& text) { return swr::WideToUtf8(text); }

void Expect(const std::string& what, const std::u16string& seen, const std::u16string& expected) {
  if (seen == expected) return;
  throw Disagreement(what + "\n  actual:   " + Utf8(seen) + "\n  expected: " + Utf8(expected));
}

void Require(bool holds, const std::string& what) {
  if (!holds) throw Disagreement(what);
}

// The value after this label in the details, or nothing.
std::optional<std::u16string> Detail(const std::u16string& details, const std::u16string& label) {
  const std::u16string mark = u"\r\n" + label + u":\t";
  const size_t start = details.find(mark);
  if (start == details.npos) return std::nullopt;
  const size_t end = details.find(u"\r\n", start + 2);
  const size_t value = start + mark.size();
  return details.substr(value, end == details.npos ? end : end - value);
}

// The checksum file and line that the row comes from: "(list, line 3)", or nothing.
std::u16string ListPosition(const ModelRow& row) {
  if (!row.listed) return {};
  const std::string line = std::to_string(row.checksumLine);
  return u"(" + row.checksumFile + u", line " + std::u16string(line.begin(), line.end()) + u")";
}
std::u16string ListPosition(const SeenRow& seen) {
  const std::u16string expected = Detail(seen.details, u"Expected").value_or(u"");
  return expected.empty() ? u"" : expected.substr(expected.find(u'('));
}

std::optional<DigestBytes> FromHex(const std::u16string& text) {
  DigestBytes bytes;
  for (size_t i = 0; i + 1 < text.size(); i += 2) {
    bytes.push_back(static_cast<uint8_t>(std::stoi(Utf8(text.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

// "1.5 MB (1,572,864 bytes)", "17 bytes".
uint64_t ExactSizeOf(const std::u16string& text) {
  uint64_t size = 0;
  for (const char16_t unit : text.substr(text.find(u'(') == text.npos ? 0 : text.find(u'('))) {
    if (unit >= u'0' && unit <= u'9') size = size * 10 + (unit - u'0');
  }
  return size;
}

// A row of the model and the same row as read from the window.
class RowCheck {
 public:
  RowCheck(const WindowModel& model, ModelRow& row, const SeenRow& seen)
      : model_(model), row_(row), seen_(seen), file_(model.FileOf(row)) {}

  // The row for the reference model.
  ReferenceFileRow Learn() {
    expected_.path = file_.path;
    expected_.name = file_.name;
    expected_.folder = file_.folder;
    expected_.modified = row_.modified;
    expected_.listed = row_.listed;
    expected_.checksumFile = row_.checksumFile;
    expected_.checksumLine = row_.checksumLine;
    expected_.signature = Detail(seen_.details, u"Signature").value_or(u"");
    if (IsSeenFailed()) {
      LearnFailure();
    } else {
      LearnDigests();
    }
    expected_.digests = row_.digests;
    expected_.size = row_.size;
    return expected_;
  }

  std::string Description() const { return "row of " + Utf8(file_.path); }

 private:
  const std::u16string& Status() const { return seen_.cells.back(); }
  std::vector<FileState> States() const {
    return {file_.states.begin() + static_cast<std::ptrdiff_t>(row_.firstState),
            file_.states.end()};
  }
  static std::u16string FailureText(uint32_t error) {
    return error == 2 ? u"Missing" : swr::FormatErrorText(error);
  }

  // Whether the row shows, and is allowed to show, that the file could not be read.
  bool IsSeenFailed() {
    if (row_.error != 0) return true;
    if (std::ranges::includes(KeysOf(row_.digests), row_.requested)) return false;
    for (const FileState& state : States()) {
      if (state.error == 0 || Status() != FailureText(state.error)) continue;
      row_.error = state.error;
      for (const FileState& other : States()) {
        row_.isSizeUnknown = row_.isSizeUnknown || other.isTorn ||
                             (other.content != nullptr && other.content->size != row_.size);
      }
      return true;
    }
    return false;
  }

  static AlgoSet KeysOf(const std::map<AlgoId, DigestBytes>& digests) {
    AlgoSet keys;
    for (const auto& [id, bytes] : digests) keys.insert(id);
    return keys;
  }

  // The details of such a row show no digests; only their columns do.
  void LearnFailure() {
    expected_.status = RowStatus::Failed;
    expected_.error = row_.error;
    size_t column = FirstDigestColumn;
    for (const AlgoId id : model_.selectedAlgos) {
      const std::u16string& cell = seen_.cells[column++];
      if (!cell.empty() && !row_.digests.contains(id)) LearnDigest(id, cell);
    }
  }

  void LearnDigests() {
    const size_t before = row_.digests.size();
    for (const swr::AlgoInfo& info : swr::AllAlgos()) {
      const auto seen = Detail(seen_.details, std::u16string(info.name));
      if (seen && !row_.digests.contains(info.id)) LearnDigest(info.id, *seen);
    }
    if (row_.digests.size() > before) LearnSize();
    AlgoSet wanted = model_.selectedAlgos;
    if (row_.listed) wanted.insert(row_.listed->algos.begin(), row_.listed->algos.end());
    const bool hasAll = std::ranges::includes(KeysOf(row_.digests), wanted);
    // A failed attempt clears the pending digests; a later one may have succeeded.
    const bool mayHaveFailed =
        std::ranges::any_of(States(), [](const FileState& state) { return state.error != 0; });
    if (mayHaveFailed && !hasAll) row_.mayLack = true;
    Require(hasAll || row_.mayLack, Description() + " lacks digests: " + Utf8(seen_.details));
    row_.mayLack = row_.mayLack && !hasAll;

    const bool isCancelled = Status() == u"Cancelled";
    Require(!isCancelled || row_.mayBeCancelled, Description() + " was not cancelled");
    row_.mayBeCancelled = isCancelled;
    expected_.status = isCancelled ? RowStatus::Cancelled : RowStatus::Done;
    constexpr std::u16string_view changedText = u"Done, but the file changed while it was read";
    expected_.changed = row_.mayBeChanged && Status() == changedText;
    // Unless it shows a verdict, the status tells whether a change was noticed.
    if (Status() == u"Done") row_.mayBeChanged = false;
  }

  // A new digest belongs to some content that the file had in the meantime.
  void LearnDigest(AlgoId id, const std::u16string& hex) {
    const std::string name = Utf8(std::u16string(swr::GetAlgo(id).name));
    Require(row_.requested.contains(id), Description() + ": nothing requested its " + name);
    const DigestBytes bytes = *FromHex(hex);
    bool isRight = false;
    for (const FileState& state : States()) {
      if (state.isTorn) row_.mayBeChanged = true;
      isRight = isRight || state.isTorn ||
                (state.content != nullptr && state.content->digests.at(id) == bytes);
    }
    Require(isRight, Description() + " has a wrong " + name + ": " + Utf8(hex));
    row_.digests[id] = bytes;
  }

  void LearnSize() {
    const uint64_t seen = ExactSizeOf(Detail(seen_.details, u"Size").value_or(u""));
    const auto states = States();
    const bool isRight = std::ranges::any_of(states, [&](const FileState& state) {
      return state.isTorn || (state.content != nullptr && state.content->size == seen);
    });
    Require(isRight, Description() + " has a wrong size: " + Utf8(seen_.details));
    row_.size = seen;
  }

  const WindowModel& model_;
  ModelRow& row_;
  const SeenRow& seen_;
  const WorldFile& file_;
  ReferenceFileRow expected_;
};

bool MatchesBox(const ReferenceFileRow& row, const ReferenceClaim& claim) {
  return row.status != RowStatus::Failed && std::ranges::any_of(claim.algos, [&](AlgoId id) {
           const auto digest = row.digests.find(id);
           return digest != row.digests.end() && digest->second == claim.bytes;
         });
}

// A value that matches no row was compared with every row, using every candidate algorithm, unless
// the user cancelled that. Such a row can still become Done through a job that had just finished.
void CheckSearch(const WindowModel& model, const ReferenceWindow& reference) {
  if (!reference.box.claim) return;
  const ReferenceClaim& claim = *reference.box.claim;
  const auto isMatch = [&](const ReferenceFileRow& row) { return MatchesBox(row, claim); };
  if (std::ranges::any_of(reference.rows, isMatch)) return;
  for (size_t i = 0; i < reference.rows.size(); ++i) {
    const ReferenceFileRow& row = reference.rows[i];
    if (row.status != RowStatus::Done || model.rows[i].mayLackSearch) continue;
    for (const AlgoId id : claim.algos) {
      Require(row.digests.contains(id),
              "the expected hash was not compared with " + Utf8(row.path));
    }
  }
}

Texts HeadingsOf(const WindowModel& model) {
  Texts headings = {u"Name", u"Folder", u"Size"};
  for (const AlgoId id : model.selectedAlgos) headings.emplace_back(swr::GetAlgo(id).name);
  headings.push_back(u"Status");
  return headings;
}

std::u16string Joined(const Texts& texts) {
  std::u16string joined;
  for (const std::u16string& text : texts) joined += text + u" ";
  return joined;
}

void CheckSums(const WindowModel& model, ReferenceWindow& reference, const SeenWindow& seen) {
  const auto isUnknown = [](const ModelRow& row) { return row.isSizeUnknown; };
  if (std::ranges::any_of(model.rows, isUnknown)) return;
  uint64_t total = 0;
  for (const ReferenceFileRow& row : reference.rows) total += row.size;
  const size_t count = reference.rows.size();
  const std::string number = std::to_string(count) + (count == 1 ? " file, " : " files, ");
  Expect("the status line", seen.statusLine,
         count == 0 ? u"" : swr::Utf8ToWide(number) + swr::FormatSize(total));
  if (count < 2) return;
  for (size_t i = 0; i < count; ++i) reference.selection.insert(i);
  Expect("the details of all rows", seen.detailsOfAll, reference.Details());
}

}  // namespace

void AdoptOrder(WindowModel& model, const std::vector<SeenRow>& seen) {
  if (model.isOrderKnown) return;
  using Key = std::pair<std::u16string, std::u16string>;
  std::map<std::u16string, size_t> rowsOfFile;
  for (const ModelRow& row : model.rows) ++rowsOfFile[model.FileOf(row).path];
  std::map<Key, size_t> places;
  for (size_t i = 0; i < model.rows.size(); ++i) {
    const std::u16string& path = model.FileOf(model.rows[i]).path;
    places[{path, rowsOfFile[path] > 1 ? ListPosition(model.rows[i]) : u""}] = i;
  }
  std::vector<ModelRow> ordered;
  for (const SeenRow& row : seen) {
    const std::u16string path = row.cells[FolderColumn] + u"\\" + row.cells[NameColumn];
    const auto place = places.find({path, rowsOfFile[path] > 1 ? ListPosition(row) : u""});
    Require(place != places.end(), "there should be no row of " + Utf8(path));
    ordered.push_back(model.rows[place->second]);
    places.erase(place);
  }
  Require(places.empty(),
          "a row is missing: " + (places.empty() ? "" : Utf8(places.begin()->first.first)));
  model.rows = std::move(ordered);
  model.isOrderKnown = true;
}

ReferenceWindow Compare(WindowModel& model, const SeenWindow& seen) {
  Require(seen.rows.size() == model.rows.size(), "there are " + std::to_string(seen.rows.size()) +
                                                     " rows instead of " +
                                                     std::to_string(model.rows.size()));
  Expect("the columns", Joined(seen.headings), Joined(HeadingsOf(model)));
  std::vector<int> marks(seen.headings.size(), 0);
  if (model.sortColumn) marks[*model.sortColumn] = model.sortDescending ? -1 : 1;
  if (seen.sortMarks != marks) {
    std::string text = "the sort marks of the headings, actual and expected:";
    for (size_t i = 0; i < marks.size(); ++i) {
      text += " " + std::to_string(seen.sortMarks[i]) + "/" + std::to_string(marks[i]);
    }
    throw Disagreement(text);
  }
  AdoptOrder(model, seen.rows);

  ReferenceWindow reference;
  reference.box = model.box;
  reference.selectedAlgos = model.selectedAlgos;
  reference.uppercase = model.uppercase;
  for (size_t i = 0; i < model.rows.size(); ++i) {
    RowCheck check(model, model.rows[i], seen.rows[i]);
    Expect("the name in row " + std::to_string(i), seen.rows[i].cells[NameColumn],
           model.FileOf(model.rows[i]).name);
    Expect("the folder of the " + check.Description(), seen.rows[i].cells[FolderColumn],
           model.FileOf(model.rows[i]).folder);
    reference.rows.push_back(check.Learn());
  }
  for (size_t i = 0; i < reference.rows.size(); ++i) {
    const std::string place = " in the row of " + Utf8(reference.rows[i].path);
    for (size_t column = SizeColumn; column < seen.headings.size(); ++column) {
      Expect(Utf8(seen.headings[column]) + place, seen.rows[i].cells[column],
             reference.Cell(reference.rows[i], seen.headings[column]));
    }
    reference.selection = {i};
    Expect("the details" + place, seen.rows[i].details, reference.Details());
  }
  reference.selection.clear();
  CheckSearch(model, reference);
  Expect("the result line", seen.resultLine, reference.Line().text);
  Expect("the details of no row", seen.detailsOfNone, reference.Details());
  CheckSums(model, reference, seen);
  reference.selection.clear();
  model.isIdle = true;
  return reference;
}

}  // namespace app::testing
