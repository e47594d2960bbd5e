#include "app/window/status_line.h"

#include <algorithm>
#include <limits>

#include "swr/paths/path_forms.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

// `part` of `whole` in steps of 1/`steps`, rounded down. Where the product would not fit 64 bits,
// halving both keeps the ratio.
uint64_t Fraction(uint64_t part, uint64_t whole, uint64_t steps) {
  while (part > std::numeric_limits<uint64_t>::max() / steps) {
    part /= 2;
    whole /= 2;
  }
  return part * steps / whole;
}

// Minutes do not roll over into hours.
std::u16string TimeLeft(double seconds) {
  const auto whole =
      static_cast<uint64_t>(std::min(seconds, double{std::numeric_limits<int32_t>::max()}));
  std::u16string text = swr::DecimalText(whole / 60) + u":";
  if (whole % 60 < 10) text += u'0';
  return text + swr::DecimalText(whole % 60);
}

}  // namespace

std::u16string IdleLine(size_t rowCount, uint64_t totalSize) {
  if (rowCount == 0) return {};
  return swr::DecimalText(rowCount) + (rowCount == 1 ? u" file, " : u" files, ") +
         swr::FormatSize(totalSize);
}

std::u16string RunningLine(const WorkerSnapshot& snapshot) {
  std::u16string line = u"Hashing ";
  line += swr::EscapeForDisplay(swr::SplitPath(snapshot.currentPath).name);
  if (snapshot.currentSize != 0) {
    line += u" (";
    line += swr::DecimalText(Fraction(snapshot.currentBytes, snapshot.currentSize, 100));
    line += u"%)";
  }
  if (snapshot.remainingJobs > 1) {
    line += u", " + swr::DecimalText(snapshot.remainingJobs - 1) + u" more";
  }
  if (snapshot.bytesPerSecond > 0) {
    line += u", " + swr::FormatSize(static_cast<uint64_t>(snapshot.bytesPerSecond)) + u"/s";
    const double secondsLeft =
        static_cast<double>(snapshot.totalBytes - snapshot.doneBytes) / snapshot.bytesPerSecond;
    if (secondsLeft >= 2.0) line += u", " + TimeLeft(secondsLeft) + u" left";
  }
  return line;
}

ProgressFigures FiguresOf(const WorkerSnapshot& snapshot) {
  if (snapshot.totalBytes == 0) return {.position = 0, .doneBytes = 0, .totalBytes = 1};
  return {
      .position = static_cast<uint32_t>(Fraction(snapshot.doneBytes, snapshot.totalBytes, 10000)),
      .doneBytes = snapshot.doneBytes,
      .totalBytes = snapshot.totalBytes};
}

}  // namespace app
