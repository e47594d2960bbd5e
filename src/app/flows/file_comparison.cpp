#include "app/flows/file_comparison.h"

#include <string>

#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

constexpr swr::AlgoId CompareAlgo = swr::AlgoId::Sha256;

swr::DigestSlot SlotOf(const Row& row) { return row.digests[swr::IndexOf(CompareAlgo)]; }

bool IsSettled(const Row& row) { return row.status == RowStatus::Failed || SlotOf(row).present; }

TaskDialogSpec SizesDiffer(const Row& first, const Row& second) {
  const auto line = [](const Row& row) {
    return swr::EscapeForDisplay(row.Name()) + u" (" + swr::FormatSize(row.size) + u")\n";
  };
  return MessageDialog(TaskDialogIcon::Warning, u"The two files are different.",
                       line(first) + line(second) + u"\nTheir sizes differ.");
}

// For two rows that have their digests or can't get them.
TaskDialogSpec Answer(const Row& first, const Row& second) {
  if (first.status == RowStatus::Failed || second.status == RowStatus::Failed) {
    return MessageDialog(TaskDialogIcon::Error, u"One of the files can't be read.");
  }
  const std::u16string compared = swr::EscapeForDisplay(first.Name()) + u"\n" +
                                  swr::EscapeForDisplay(second.Name()) + u"\n\nCompared by " +
                                  std::u16string(swr::GetAlgo(CompareAlgo).name);
  if (swr::DigestEquals(SlotOf(first), SlotOf(second).View())) {
    return MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                         compared + u"; the sizes are equal too.");
  }
  return MessageDialog(TaskDialogIcon::Warning, u"The two files are different.", compared + u".");
}

}  // namespace

FileComparison::FileComparison(RowTable& rows, Hashing& hashing, ExpectedHash& expected,
                               ListView& list, Messages& messages)
    : rows_(rows), hashing_(hashing), expected_(expected), list_(list), messages_(messages) {}

void FileComparison::Start(const RowIds& selection) {
  const std::vector<const Row*> selected = FindRows(rows_, selection);
  if (selected.size() != 2) return;
  const Row& first = *selected[0];
  const Row& second = *selected[1];
  // If a file could not be read, its row may not have its actual size.
  const bool sizesAreKnown =
      first.status != RowStatus::Failed && second.status != RowStatus::Failed;
  if (sizesAreKnown && first.size != second.size) {
    messages_.ShowTaskDialog(SizesDiffer(first, second));
    return;
  }
  waitsFor_ = {first.id, second.id};
  for (const Row* row : selected) {
    if (hashing_.QueueRow(row->id, swr::MaskOf(CompareAlgo))) {
      list_.RedrawRow(*rows_.IndexOf(row->id));
    }
  }
  // A cancelled row becomes pending again.
  expected_.Compare();
  Finish();
}

void FileComparison::Finish() {
  if (!waitsFor_) return;
  const Row* first = rows_.Find(waitsFor_->first);
  const Row* second = rows_.Find(waitsFor_->second);
  if (first == nullptr || second == nullptr) {
    waitsFor_.reset();
    return;
  }
  if (!IsSettled(*first) || !IsSettled(*second)) return;
  // Before the message, because further results arrive while it is open.
  waitsFor_.reset();
  messages_.ShowTaskDialog(Answer(*first, *second));
}

}  // namespace app
