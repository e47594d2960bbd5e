// Hashes files as the worker does, as a whole command that can be timed beside other tools.
//
//   hash_files ALGORITHM[,ALGORITHM...] FILE...      prints each digest and the file
//   hash_files --memory ALGORITHM[,...] FILE         prints how many KiB the peak of resident
//   memory
//                                                    lies over what the process held before
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "swr/hash/digest_text.h"
#include "swr/hash/hash_file.h"
#include "swr/system/thread_schedule.h"
#include "swr/text/encoding.h"

namespace {

swr::AlgoMask ParseMask(std::string_view names) {
  swr::AlgoMask mask = 0;
  while (!names.empty()) {
    const size_t end = names.find(',');
    const auto id = swr::ParseAlgoName(names.substr(0, end));
    if (!id) {
      std::fprintf(stderr, "hash_files: unknown algorithm in \"%s\"\n", names.data());
      std::exit(2);
    }
    mask |= swr::MaskOf(*id);
    names.remove_prefix(end == names.npos ? names.size() : end + 1);
  }
  return mask;
}

// A figure of /proc/self/status, in KiB.
long ReadStatus(std::string_view key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(key)) return std::atol(line.c_str() + key.size() + 1);
  }
  return 0;
}

bool HashOne(const char* name, swr::AlgoMask mask) {
  const swr::HashOutcome outcome = swr::HashFile(swr::Utf8ToWide(name), mask, {});
  if (outcome.error != 0) {
    std::fprintf(stderr, "hash_files: %s: error %u\n", name, outcome.error);
    return false;
  }
  std::string line;
  for (const swr::AlgoId id : swr::IdsFromMask(mask)) {
    line += swr::DigestToHex(outcome.digests[swr::IndexOf(id)], false);
    line += ' ';
  }
  std::printf("%s %s\n", line.c_str(), name);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const bool measuresMemory = count > 1 && std::string_view(arguments[1]) == "--memory";
  const int first = measuresMemory ? 2 : 1;
  if (count < first + 2) {
    std::fputs("usage: hash_files [--memory] ALGORITHM[,ALGORITHM...] FILE...\n", stderr);
    return 2;
  }
  const swr::AlgoMask mask = ParseMask(arguments[first]);
  swr::PreferThroughput();
  const long before = ReadStatus("VmRSS");
  bool succeeded = true;
  for (int i = first + 1; i < count; ++i) succeeded = HashOne(arguments[i], mask) && succeeded;
  if (measuresMemory) std::printf("%ld\n", ReadStatus("VmHWM") - before);
  return succeeded ? 0 : 1;
}
