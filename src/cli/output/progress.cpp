#include "cli/output/progress.h"

#include "swr/paths/path_forms.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"
#include "swr/text/progress_text.h"

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

// A short run needs no progress line.
constexpr std::chrono::milliseconds FirstShown(500);
constexpr std::chrono::milliseconds Pause(100);

}  // namespace

Progress::Progress(Console& console)
    : console_(console),
      isShown_(console.ShowsProgress()),
      start_(Clock::now()),
      lastShown_(start_ + FirstShown - Pause) {}

void Progress::AddExpected(uint64_t bytes) {
  expectedBytes_.fetch_add(bytes, std::memory_order_relaxed);
  expectedFiles_.fetch_add(1, std::memory_order_relaxed);
}

void Progress::Begin(std::u16string_view name) {
  if (!isShown_) return;
  const std::lock_guard lock(mutex_);
  name_ = name;
}

void Progress::Tick() {
  if (!isShown_) return;
  const Clock::time_point now = Clock::now();
  if (now < lastShown_ + Pause) return;
  lastShown_ = now;
  console_.ShowProgress(Line(std::chrono::duration<double>(now - start_).count()));
}

std::u16string Progress::Line(double seconds) {
  const uint64_t bytes = bytes_.load(std::memory_order_relaxed);
  const uint64_t files = files_.load(std::memory_order_relaxed);
  const uint64_t expected = expectedBytes_.load(std::memory_order_relaxed);
  const uint64_t expectedFiles = expectedFiles_.load(std::memory_order_relaxed);
  // The total is known once the walk has ended. Files that grow can exceed it.
  const bool hasTotal =
      isComplete_.load(std::memory_order_relaxed) && expected > 0 && bytes <= expected;
  std::u16string line;
  if (hasTotal) line += swr::DecimalText(swr::FractionOf(bytes, expected, 100)) + u"%, ";
  line += swr::DecimalText(files);
  if (hasTotal) line += u" of " + swr::DecimalText(expectedFiles);
  line += files == 1 && !hasTotal ? u" file, " : u" files, ";
  line += swr::FormatSize(bytes);
  const double speed = seconds > 0 ? static_cast<double>(bytes) / seconds : 0;
  line += u", " + swr::FormatSize(static_cast<uint64_t>(speed)) + u"/s";
  if (hasTotal && speed > 0) {
    const double left = static_cast<double>(expected - bytes) / speed;
    if (left >= 2) line += u", " + swr::FormatTimeLeft(left) + u" left";
  }
  const std::lock_guard lock(mutex_);
  line += u"  ";
  line += swr::EscapeForDisplay(swr::SplitPath(name_).name);
  return line;
}

}  // namespace cli
