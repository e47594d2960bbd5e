#include "cli/output/console.h"

#include "swr/system/interrupt.h"
#include "swr/system/name_bytes.h"
#include "swr/text/display_escape.h"
#include "swr/text/encoding.h"

namespace cli {
namespace {

constexpr size_t GatheredBytes = 65536;

std::string_view CodeOf(Tone tone) {
  switch (tone) {
    case Tone::Good:
      return "\x1b[32m";
    case Tone::Bad:
      return "\x1b[1;31m";
    case Tone::Faint:
      return "\x1b[2m";
    case Tone::Plain:
      break;
  }
  return {};
}

std::string WithTone(std::string_view text, Tone tone, bool hasColors) {
  if (!hasColors || tone == Tone::Plain) return std::string(text);
  return std::string(CodeOf(tone)) + std::string(text) + "\x1b[0m";
}

}  // namespace

Console::Console(ByteSink& out, ByteSink& err, const ConsoleTraits& traits)
    : outSink_(out),
      errSink_(err),
      traits_(traits),
      wipe_("\r" + std::string(traits.errWidth > 0 ? traits.errWidth - 1 : 0, ' ') + "\r") {
  if (traits_.errIsTerminal) swr::WriteOnInterrupt(wipe_);
}

Console::~Console() {
  EndProgress();
  Flush();
  swr::WriteOnInterrupt({});
}

void Console::Out(std::string_view text) {
  const std::lock_guard lock(mutex_);
  // On a terminal both streams are shown together, so their order must be kept.
  if (traits_.outIsTerminal && !err_.empty()) FlushErr();
  out_ += text;
  if (out_.size() >= GatheredBytes) FlushOut();
}

void Console::Err(std::string_view text) {
  const std::lock_guard lock(mutex_);
  if (traits_.errIsTerminal && !out_.empty()) FlushOut();
  err_ += text;
  if (err_.size() >= GatheredBytes) FlushErr();
}

void Console::WriteMessage(std::u16string_view text) {
  // A terminal could interpret a byte that is not part of a character as a command.
  Err("swrhash: " + (traits_.errIsTerminal ? swr::WideToUtf8(text) : swr::NameBytes(text)) + "\n");
}

std::u16string Console::NameForOut(std::u16string_view name) const {
  return traits_.outIsTerminal ? swr::EscapeForDisplay(name) : std::u16string(name);
}

std::u16string Console::NameForErr(std::u16string_view name) const {
  return swr::EscapeForDisplay(name);
}

std::string Console::Toned(std::string_view text, Tone tone) const {
  return WithTone(text, tone, traits_.outHasColors);
}

std::string Console::TonedErr(std::string_view text, Tone tone) const {
  return WithTone(text, tone, traits_.errHasColors);
}

void Console::ShowProgress(std::u16string_view text) {
  if (!traits_.errIsTerminal) return;
  const std::lock_guard lock(mutex_);
  FlushOut();
  FlushErr();
  // The last column stays empty, because some terminals wrap when it is written.
  const size_t width = traits_.errWidth > 0 ? traits_.errWidth - 1 : 0;
  std::u16string_view shown = text.substr(0, width);
  const bool cutsPair = shown.size() < text.size() && !shown.empty() && shown.back() >= 0xD800 &&
                        shown.back() <= 0xDBFF;
  if (cutsPair) shown.remove_suffix(1);
  const std::string line =
      "\r" + swr::WideToUtf8(shown) + std::string(width - shown.size(), ' ') + "\r";
  // Failing to write the progress line is not an error.
  hasProgress_ = errSink_.Write(line) == 0;
}

void Console::EndProgress() {
  const std::lock_guard lock(mutex_);
  WipeProgress();
}

void Console::WipeProgress() {
  if (!hasProgress_) return;
  hasProgress_ = false;
  if (errSink_.Write(wipe_) != 0) err_.clear();
}

void Console::FlushOut() {
  if (out_.empty()) return;
  if (traits_.outIsTerminal) WipeProgress();
  if (outError_ == 0) outError_ = outSink_.Write(out_);
  out_.clear();
}

void Console::FlushErr() {
  if (err_.empty()) return;
  WipeProgress();
  // If standard error fails, there is nowhere left to report it.
  [[maybe_unused]] const uint32_t error = errSink_.Write(err_);
  err_.clear();
}

void Console::Flush() {
  const std::lock_guard lock(mutex_);
  FlushOut();
  FlushErr();
}

uint32_t Console::OutError() const {
  const std::lock_guard lock(mutex_);
  return outError_;
}

}  // namespace cli
