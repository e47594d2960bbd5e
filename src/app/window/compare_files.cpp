// Whether two files have the same content: told by their sizes alone where these differ, otherwise
// by SHA-256, whatever algorithms are selected.
#include "app/window/main_window.h"
#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

constexpr swr::AlgoId CompareAlgo = swr::AlgoId::Sha256;

const swr::DigestSlot& SlotOf(const ListRow& row) { return row.digests[swr::IndexOf(CompareAlgo)]; }

bool IsSettled(const ListRow& row) {
  return row.status == RowStatus::Failed || SlotOf(row).present;
}

TaskDialogSpec SizesDiffer(const ListRow& first, const ListRow& second) {
  const auto line = [](const ListRow& row) {
    return swr::EscapeForDisplay(row.name) + u" (" + swr::FormatSize(row.size) + u")\n";
  };
  return MessageDialog(TaskDialogIcon::Warning, u"The two files are different.",
                       line(first) + line(second) + u"\nTheir sizes differ.");
}

// What is known of two rows that have their digests or can't have them.
TaskDialogSpec Answer(const ListRow& first, const ListRow& second) {
  if (first.status == RowStatus::Failed || second.status == RowStatus::Failed) {
    return MessageDialog(TaskDialogIcon::Error, u"One of the files can't be read.");
  }
  const std::u16string compared = swr::EscapeForDisplay(first.name) + u"\n" +
                                  swr::EscapeForDisplay(second.name) + u"\n\nCompared by " +
                                  std::u16string(swr::GetAlgo(CompareAlgo).name);
  if (swr::DigestEquals(SlotOf(first), SlotOf(second).View())) {
    return MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                         compared + u"; the sizes are equal too.");
  }
  return MessageDialog(TaskDialogIcon::Warning, u"The two files are different.", compared + u".");
}

}  // namespace

void MainWindow::CompareTwoFiles(const RowIds& ids) {
  if (ids.size() != 2) return;
  ListRow* const found[] = {FindRow(ids[0]), FindRow(ids[1])};
  if (found[0] == nullptr || found[1] == nullptr) return;
  ListRow& first = *found[0];
  ListRow& second = *found[1];
  // The size of a row that could not be read may not be the file's.
  const bool sizesCount = first.status != RowStatus::Failed && second.status != RowStatus::Failed;
  if (sizesCount && first.size != second.size) {
    desktop_.ShowTaskDialog(SizesDiffer(first, second));
    return;
  }
  compareFirstId = first.id;
  compareSecondId = second.id;
  compareArmed = true;
  for (ListRow* row : {&first, &second}) {
    if (QueueRow(*row, swr::MaskOf(CompareAlgo))) RepaintRow(row->id);
  }
  // A row that was cancelled before is at work again.
  CompareExpected();
  FinishFileCompare();
}

void MainWindow::FinishFileCompare() {
  if (!compareArmed) return;
  const ListRow* first = FindRow(compareFirstId);
  const ListRow* second = FindRow(compareSecondId);
  if (first == nullptr || second == nullptr) {
    compareArmed = false;
    return;
  }
  if (!IsSettled(*first) || !IsSettled(*second)) return;
  // Before the message, during which further results come in.
  compareArmed = false;
  desktop_.ShowTaskDialog(Answer(*first, *second));
}

}  // namespace app
