// What the program says: lines for standard output (or a file in its place) and for standard error,
// both gathered into larger writes, colours, names escaped for a terminal, and the progress line.
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

  // Text of one or more whole lines.
  void Out(std::string_view text);
  void Err(std::string_view text);
  // "swrhash: TEXT" as a line of its own on standard error.
  void Complain(std::u16string_view text);

  // The name as it goes to standard output or standard error: with control and direction characters
  // escaped where a terminal would obey them, else as the file system has it.
  std::u16string NameForOut(std::u16string_view name) const;
  std::u16string NameForErr(std::u16string_view name) const;
  // The text in the colour of the tone, where standard output has colours.
  std::string Toned(std::string_view text, Tone tone) const;
  std::string TonedErr(std::string_view text, Tone tone) const;

  bool OutIsTerminal() const { return traits_.outIsTerminal; }
  bool ShowsProgress() const { return traits_.errIsTerminal; }

  // Puts the text, one line that is cut to the terminal's width, in the place of the last one.
  void ShowProgress(std::u16string_view text);
  void EndProgress();

  // Writes what is gathered. Every tenth of a second or so, so that somebody who reads along sees
  // what there is.
  void Flush();
  // 0, or the code of the error at which writing to standard output ended.
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
  std::string wipe_;  // what takes the progress line away
};

}  // namespace cli
