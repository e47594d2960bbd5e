#include "app/verdicts/status_line.h"

#include "swr/paths/path_forms.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"
#include "swr/text/progress_text.h"

namespace app {

std::u16string IdleLine(size_t rowCount, uint64_t totalSize) {
  if (rowCount == 0) return {};
  return swr::DecimalText(rowCount) + (rowCount == 1 ? u" file, " : u" files, ") +
         swr::FormatSize(totalSize);
}

std::u16string LookingUpLine(size_t rowCount, uint64_t totalSize) {
  const std::u16string line = u"Looking up files...";
  return rowCount == 0 ? line : line + u" " + IdleLine(rowCount, totalSize) + u" so far";
}

std::u16string RunningLine(const WorkerSnapshot& snapshot) {
  std::u16string line = u"Hashing ";
  line += swr::EscapeForDisplay(swr::SplitPath(snapshot.currentPath).name);
  if (snapshot.currentSize != 0) {
    line += u" (";
    line += swr::DecimalText(swr::FractionOf(snapshot.currentBytes, snapshot.currentSize, 100));
    line += u"%)";
  }
  if (snapshot.remainingJobs > 1) {
    line += u", " + swr::DecimalText(snapshot.remainingJobs - 1) + u" more";
  }
  if (snapshot.bytesPerSecond > 0) {
    line += u", " + swr::FormatSize(static_cast<uint64_t>(snapshot.bytesPerSecond)) + u"/s";
    const double secondsLeft =
        static_cast<double>(snapshot.totalBytes - snapshot.doneBytes) / snapshot.bytesPerSecond;
    if (secondsLeft >= 2.0) line += u", " + swr::FormatTimeLeft(secondsLeft) + u" left";
  }
  return line;
}

ProgressFigures FiguresOf(const WorkerSnapshot& snapshot) {
  if (snapshot.totalBytes == 0) return {.position = 0, .doneBytes = 0, .totalBytes = 1};
  return {.position = static_cast<uint32_t>(
              swr::FractionOf(snapshot.doneBytes, snapshot.totalBytes, 10000)),
          .doneBytes = snapshot.doneBytes,
          .totalBytes = snapshot.totalBytes};
}

}  // namespace app
