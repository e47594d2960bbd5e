// Runs the program inside the test process and captures its output.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/output/byte_sink.h"
#include "cli/program.h"
#include "swr/system/name_bytes.h"

namespace cli::testing {

// Keeps what is written, and fails once a limit of bytes is reached.
class CatchingSink final : public ByteSink {
 public:
  explicit CatchingSink(size_t room = std::string::npos, uint32_t error = 0)
      : room_(room), error_(error) {}

  uint32_t Write(std::string_view bytes) override {
    if (text.size() + bytes.size() > room_) return error_;
    text += bytes;
    return 0;
  }

  std::string text;

 private:
  size_t room_;
  uint32_t error_;
};

struct Ended {
  int code = 0;
  std::string out;
  std::string err;
};

inline Ended RunCaptured(const std::vector<std::string>& arguments,
                         const ConsoleTraits& streams = {}) {
  CatchingSink out;
  CatchingSink err;
  const int code = RunProgram(arguments, out, err, streams);
  return {code, out.text, err.text};
}

inline std::string Bytes(std::u16string_view path) { return swr::NameBytes(path); }

}  // namespace cli::testing
