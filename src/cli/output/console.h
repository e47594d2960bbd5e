// The program's output: lines for standard output (or the file given with --output) and for
// standard error, both buffered; colours; names escaped for a terminal; and the progress line.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "cli/output/byte_sink.h"

namespace cli {

struct ConsoleTraits {
  bool outIsTerminal = false;
  bool errIsTerminal = false;
  bool outHasColors = false;
  bool errHasColors = false;
  uint32_t errWidth = 80;  // characters
};

enum class Tone : uint8_t { Plain, Good, Bad, Faint };

// All functions may be called by any thread.
class Console {
 public:
  // The sinks must outlive the object.
  Console(ByteSink& out, ByteSink& err, const ConsoleTraits& traits);
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // Write one or more complete lines.
  void Out(std::string_view text);
  void Err(std::string_view text);
  // Writes the line "swrhash: TEXT" to standard error.
  void WriteMessage(std::u16string_view text);

  // The name as it is written to standard output or standard error: on a terminal, with control and
  // direction characters escaped; otherwise unchanged.
  std::u16string NameForOut(std::u16string_view name) const;
  std::u16string NameForErr(std::u16string_view name) const;
  // The text in the colour of the tone if standard output or, for TonedErr, standard error has
  // colours.
  std::string Toned(std::string_view text, Tone tone) const;
  std::string TonedErr(std::string_view text, Tone tone) const;

  bool OutIsTerminal() const { return traits_.outIsTerminal; }
  bool ShowsProgress() const { return traits_.errIsTerminal; }

  // Replaces the progress line with this text, truncated to the terminal's width.
  void ShowProgress(std::u16string_view text);
  void EndProgress();

  // Writes the buffered text. Call about ten times a second, so that the output appears promptly.
  void Flush();
  // 0, or the error code of a failed write to standard output.
  uint32_t OutError() const;

 private:
  void FlushOut();
  void FlushErr();
  void WipeProgress();

  ByteSink& outSink_;
  ByteSink& errSink_;
  const ConsoleTraits traits_;
  mutable std::mutex mutex_;
  std::string out_;
  std::string err_;
  uint32_t outError_ = 0;
  bool hasProgress_ = false;
  std::string wipe_;  // erases the progress line
};

}  // namespace cli
