// The parsed options, as plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "swr/checksums/checksum_writer.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/hash/algorithms.h"

namespace cli {

enum class Mode : uint8_t { Hash, Check, Expect, Update, Help, Version };
enum class ColorWhen : uint8_t { Auto, Always, Never };

struct Selection {
  bool recursive = false;
  bool hidden = false;
  bool followLinks = false;
  std::vector<std::u16string> exclude;
  std::vector<std::u16string> include;
};

struct Options {
  Mode mode = Mode::Hash;
  std::vector<std::u16string> operands;  // files, folders or lists, as given
  swr::AlgoMask algorithms = 0;          // 0: not given
  std::optional<swr::ExportFormat> format;
  std::u16string output;                  // empty: standard output
  std::vector<std::u16string> filesFrom;  // "-" is standard input
  bool nullNames = false;
  bool quiet = false;
  bool status = false;
  bool ignoreMissing = false;
  bool strict = false;
  bool warn = false;
  bool extra = false;
  std::optional<swr::ParsedHash> expected;
  std::u16string updatedList;
  bool prune = false;
  Selection selection;
  uint32_t threads = 0;  // 0: one for each core
  ColorWhen color = ColorWhen::Auto;
};

}  // namespace cli
