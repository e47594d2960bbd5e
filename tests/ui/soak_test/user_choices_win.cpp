// The random user selects algorithms, compares and sorts.
#include <algorithm>
#include <chrono>
#include <numeric>
#include <string>

#include "app/screen/algo_boxes.h"
#include "app/screen/algo_menu.h"
#include "resources/resource_ids.h"
#include "swr/system/text_services.h"
#include "swr/text/encoding.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/soak_test/random_user_win.h"
#include "tests/ui/soak_test/window_reader_win.h"

namespace app::testing {
namespace {

using std::chrono::seconds;
using swr::AlgoId;

std::string NameOf(AlgoId id) { return swr::WideToUtf8(swr::GetAlgo(id).name); }

bool IsLegacy(AlgoId id) { return id == AlgoId::Md2 || id == AlgoId::Md4; }

}  // namespace

// The expected order, if the texts of the column are known.
void RandomUser::SortRows(const std::u16string& heading) {
  std::vector<size_t> order(model_.rows.size());
  std::iota(order.begin(), order.end(), size_t{0});
  const auto text = [&](size_t row) {
    const WorldFile& file = model_.FileOf(model_.rows[row]);
    if (heading == u"Name") return file.name;
    if (heading == u"Folder") return file.folder;
    return reference_.Cell(reference_.rows[row], heading);
  };
  std::ranges::stable_sort(order, [&](size_t a, size_t b) {
    if (model_.sortDescending) std::swap(a, b);
    if (heading == u"Size") return reference_.rows[a].size < reference_.rows[b].size;
    return swr::SystemCompareNatural(text(a), text(b)) < 0;
  });
  std::vector<ModelRow> rows;
  std::vector<ReferenceFileRow> referenceRows;
  for (const size_t row : order) {
    rows.push_back(model_.rows[row]);
    if (model_.isIdle) referenceRows.push_back(reference_.rows[row]);
  }
  model_.rows = std::move(rows);
  reference_.rows = std::move(referenceRows);
}

std::string RandomUser::Sort() {
  // Sometimes while the window is idle, when the order can be predicted.
  if (dice_.OneIn(6)) CompareAll();
  RestoreIfMinimized();
  const std::vector<std::u16string> headings = window_.List().ColumnHeadings();
  const size_t column = dice_.Pick(headings.size());
  const std::u16string& heading = headings[column];
  if (!window_.ClickHeading(static_cast<int>(column))) return "by a column out of view";
  model_.sortDescending = model_.sortColumn == column && !model_.sortDescending;
  model_.sortColumn = column;
  const bool isUnknown =
      std::ranges::any_of(model_.rows, [](const ModelRow& row) { return row.isSizeUnknown; });
  const bool isPredictable = model_.isOrderKnown && (model_.isIdle || column < 2) && !isUnknown;
  const std::string what = "by " + swr::WideToUtf8(heading);
  if (!isPredictable) {
    model_.isOrderKnown = false;
    model_.isIdle = false;
    return what;
  }
  SortRows(heading);
  const std::vector<SeenRow> seen = ReadOrder(window_);
  for (size_t i = 0; i < seen.size(); ++i) {
    const WorldFile& file = model_.FileOf(model_.rows[i]);
    if (seen[i].cells[0] == file.name && seen[i].cells[1] == file.folder) continue;
    throw Disagreement("sorted " + what + ", row " + std::to_string(i) + " is " +
                       swr::WideToUtf8(seen[i].cells[0]) + " instead of " +
                       swr::WideToUtf8(file.name));
  }
  return what + ", as predicted";
}

std::string RandomUser::ClickAlgoBox() {
  const AlgoBox& box = dice_.Of(AlgoBoxes);
  AlgoSet chosen = model_.selectedAlgos;
  if (chosen.erase(box.algo) == 0) chosen.insert(box.algo);
  window_.Click(static_cast<int>(box.control));
  model_.SelectAlgos(chosen);
  return NameOf(box.algo);
}

std::string RandomUser::ChooseAlgo() {
  AlgoId algo = static_cast<AlgoId>(dice_.Pick(swr::AlgoCount));
  if (IsLegacy(algo) && !model_.showLegacy) algo = AlgoId::Sha3_256;
  RestoreIfMinimized();
  // Opens the menu again if it was closed before the key arrived; see OpenPopup.
  const std::vector<std::u16string> before = window_.List().ColumnHeadings();
  const auto isChosen = [&] { return window_.List().ColumnHeadings() != before; };
  for (int attempts = 0; attempts < 5 && !isChosen(); ++attempts) {
    OpenPopup([&] { window_.PostCommand(IDC_ALGO_MORE); });
    window_.ChooseFromMenu(ID_ALGO_FIRST + static_cast<uint32_t>(algo));
    WaitFor([&] { return window_.OpenMenu().empty(); });
    window_.WaitForPostedMessages();
    // Deselecting the last algorithm may have no effect.
    if (model_.selectedAlgos == AlgoSet{AlgoId::Sha256} && algo == AlgoId::Sha256) break;
  }
  AlgoSet chosen = model_.selectedAlgos;
  if (chosen.erase(algo) == 0) chosen.insert(algo);
  model_.SelectAlgos(chosen);
  return NameOf(algo);
}

std::pair<std::u16string, ReferenceBox> RandomUser::RandomExpected() {
  ReferenceBox box{.isEmpty = false};
  switch (dice_.Pick(12)) {
    case 0:
      return {u"", {}};
    case 1:
      return {u" \t ", {}};
    case 2:
      return {u"not a hash", box};
    case 3:
      return {std::u16string(1 + dice_.Pick(40'000), u'a') + u"!", box};
    case 4:
      return {std::u16string(2 * (65 + dice_.Pick(2000)), u'0'), box};
    default:
      break;
  }
  const AlgoId algo = static_cast<AlgoId>(dice_.Pick(swr::AlgoCount));
  const bool isOfRow = !model_.rows.empty() && !dice_.OneIn(3);
  const size_t file =
      isOfRow ? model_.rows[dice_.Pick(model_.rows.size())].file : dice_.Of(world_.PlainFiles());
  const FileState& now = world_.Files()[file].Now();
  ReferenceClaim claim;
  claim.bytes = now.content != nullptr ? now.content->digests.at(algo)
                                       : DigestBytes(swr::GetAlgo(algo).digestSize, 1);
  if (dice_.OneIn(4)) claim.bytes[0] ^= 1;
  std::u16string text = ReferenceHex(claim.bytes, dice_.OneIn(3));
  claim.algos = ReferenceAlgosOfSize(claim.bytes.size());
  if (dice_.OneIn(3)) {
    claim.isNamed = true;
    claim.algos = {algo};
    claim.fileName = world_.Files()[file].name;
    text = swr::Utf8ToWide(swr::GetAlgo(algo).upperTag) + u" (" + claim.fileName + u") = " + text;
  } else if (dice_.OneIn(3)) {
    claim.fileName = world_.Files()[file].name;
    text += u"  " + claim.fileName;
  }
  box.claim = claim;
  return {text, box};
}

std::string RandomUser::EditBox() {
  const auto [text, box] = RandomExpected();
  window_.SetExpected(text);
  model_.EditBox(box);
  return swr::WideToUtf8(text.substr(0, 80));
}

std::string RandomUser::Paste() {
  const auto [text, box] = RandomExpected();
  if (box.isEmpty) return "nothing";
  CopyText(text);
  window_.Click(IDC_PASTE);
  model_.EditBox(box);
  return swr::WideToUtf8(text.substr(0, 80));
}

std::string RandomUser::ToggleOption() {
  switch (dice_.Pick(4)) {
    case 0:
      window_.Command(ID_UPPERCASE);
      model_.uppercase = !model_.uppercase;
      reference_.uppercase = model_.uppercase;
      return "uppercase";
    case 1:
      window_.Command(ID_INCLUDE_HIDDEN);
      model_.includeHidden = !model_.includeHidden;
      return "hidden files";
    case 2:
      window_.Command(ID_CRLF);
      return "line ends";
    default:
      break;
  }
  window_.Command(ID_SHOW_LEGACY);
  model_.showLegacy = !model_.showLegacy;
  AlgoSet chosen = model_.selectedAlgos;
  std::erase_if(chosen, IsLegacy);
  if (!model_.showLegacy && chosen != model_.selectedAlgos) model_.SelectAlgos(chosen);
  return "legacy algorithms";
}

// The answer may have to wait for all jobs queued before.
std::string RandomUser::CompareTwo() {
  if (!LearnOrder() || model_.rows.size() < 2) return "too few";
  const size_t first = dice_.Pick(model_.rows.size());
  const size_t second = (first + 1 + dice_.Pick(model_.rows.size() - 1)) % model_.rows.size();
  RestoreIfMinimized();
  window_.SelectOnly({static_cast<int>(first), static_cast<int>(second)});
  window_.PostCommand(ID_CTX_COMPARE);
  model_.Request(first, AlgoId::Sha256);
  model_.Request(second, AlgoId::Sha256);
  const bool isAnswered = WaitFor(
      [&] { return FindDialogOf(window_.ProcessId(), u"Sumwright", window_.Handle()) != nullptr; },
      seconds(120));
  if (!isAnswered) throw std::runtime_error("the comparison of two files did not end");
  const ProgramDialog message(window_, u"Sumwright");
  const std::u16string seen = message.Instruction();
  message.Press(IDOK);
  const auto hadOneState = [&](size_t row) {
    return model_.FileOf(model_.rows[row]).states.size() == 1;
  };
  const bool isPredictable = hadOneState(first) && hadOneState(second);
  CompareAll();
  const ReferenceFileRow& a = reference_.rows[first];
  const ReferenceFileRow& b = reference_.rows[second];
  std::u16string expected = u"The two files are different.";
  if (a.status == RowStatus::Failed || b.status == RowStatus::Failed) {
    expected = u"One of the files can't be read.";
  } else if (a.size == b.size && a.digests.at(AlgoId::Sha256) == b.digests.at(AlgoId::Sha256)) {
    expected = u"The two files are identical.";
  }
  if (isPredictable && seen != expected) {
    throw Disagreement("comparing two files reports: " + swr::WideToUtf8(seen) +
                       " instead of: " + swr::WideToUtf8(expected));
  }
  return swr::WideToUtf8(seen);
}

std::string RandomUser::Copy() {
  if (!LearnOrder()) return "no rows";
  const std::vector<int> chosen = SomeRows(4);
  window_.SelectOnly(chosen);
  if (dice_.OneIn(2)) {
    constexpr int commands[] = {IDC_COPY, ID_CTX_COPY_LINE, ID_CTX_COPY_ALL};
    window_.Command(dice_.Of(commands));
    return "digests";
  }
  std::u16string expected;
  for (const int row : chosen) {
    expected += model_.FileOf(model_.rows[static_cast<size_t>(row)]).path;
    if (chosen.size() > 1) expected += u"\r\n";
  }
  window_.Command(ID_CTX_COPY_PATH);
  if (!WaitFor([&] { return CopiedText() == expected; }, seconds(10))) {
    throw Disagreement("this text was not copied: " + swr::WideToUtf8(expected));
  }
  return "paths";
}

}  // namespace app::testing
