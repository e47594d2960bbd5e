// Runs the program inside the test process and captures its output.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/output/byte_sink.h"
#include "cli/program.h"
#include "swr/system/name_bytes.h"

namespace cli::testing {

// Keeps what is written, and fails when a limit of bytes would be exceeded.
class CapturingSink final : public ByteSink {
 public:
  explicit CapturingSink(size_t limit = std::string::npos, uint32_t error = 0)
      : limit_(limit), error_(error) {}

  uint32_t Write(std::string_view bytes) override {
    if (text.size() + bytes.size() > limit_) return error_;
    text += bytes;
    return 0;
  }

  std::string text;

 private:
  size_t limit_;
  uint32_t error_;
};

struct ProgramResult {
  int code = 0;
  std::string out;
  std::string err;
};

inline ProgramResult RunCaptured(const std::vector<std::string>& arguments,
                                 const ConsoleTraits& streams = {}) {
  CapturingSink out;
  CapturingSink err;
  const int code = RunProgram(arguments, out, err, streams);
  return {code, out.text, err.text};
}

inline std::string Bytes(std::u16string_view path) { return swr::NameBytes(path); }

}  // namespace cli::testing
