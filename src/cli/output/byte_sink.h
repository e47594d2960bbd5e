// A destination for bytes: a standard stream, or a file that is replaced only when it is complete.
#pragma once

#include <cstdint>
#include <string_view>

#include "swr/system/file_replacement.h"
#include "swr/system/standard_stream.h"

namespace cli {

class ByteSink {
 public:
  virtual ~ByteSink() = default;
  // 0 or a Windows error code.
  [[nodiscard]] virtual uint32_t Write(std::string_view bytes) = 0;
};

class StandardSink final : public ByteSink {
 public:
  explicit StandardSink(swr::StandardStream stream) : stream_(stream) {}
  uint32_t Write(std::string_view bytes) override { return swr::WriteStandard(stream_, bytes); }

 private:
  swr::StandardStream stream_;
};

class ReplacementSink final : public ByteSink {
 public:
  explicit ReplacementSink(swr::FileReplacement& file) : file_(file) {}
  uint32_t Write(std::string_view bytes) override { return file_.Write(bytes); }

 private:
  swr::FileReplacement& file_;
};

}  // namespace cli
