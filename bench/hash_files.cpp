// Hashes files as the worker does: a command for comparisons with other tools.
//
//   hash_files ALGORITHM[,ALGORITHM...] FILE...      prints each digest and the file
//   hash_files --memory ALGORITHM[,...] FILE         prints by how many KiB the peak of resident
//                                                    memory exceeds that before the hashing
//   hash_files --seconds ALGORITHM[,...] FILE        prints how long the hashing took
//   hash_files --in-memory ALGORITHM FILE            the same for the file's bytes in memory
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "swr/hash/digest_text.h"
#include "swr/hash/file_hasher.h"
#include "swr/hash/hasher.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/system/thread_schedule.h"

namespace {

using Clock = std::chrono::steady_clock;

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

// A value from /proc/self/status, in KiB.
long ReadStatus(std::string_view key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(key)) return std::atol(line.c_str() + key.size() + 1);
  }
  return 0;
}

bool HashOne(swr::FileHasher& hasher, const char* name, swr::AlgoMask mask) {
  const swr::HashOutcome outcome = hasher.HashFile(swr::PathTextFromBytes(name), mask, {});
  if (outcome.error != 0) {
    std::fprintf(stderr, "hash_files: %s: error %u\n", name, outcome.error);
    return false;
  }
  std::string line;
  for (const swr::AlgoId id : swr::IdsFromMask(mask)) {
    line += swr::DigestToHex(outcome.digests[swr::IndexOf(id)], false);
    line += ' ';
  }
  line += ' ';
  line += name;
  std::puts(line.c_str());
  return true;
}

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double SecondsInMemory(const char* name, swr::AlgoMask mask) {
  std::ifstream file(name, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const auto hasher = swr::MakeHasher(swr::IdsFromMask(mask).front());
  const auto start = Clock::now();
  hasher->Update(bytes.data(), bytes.size());
  hasher->Final();
  return SecondsSince(start);
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view option = count > 1 && arguments[1][0] == '-' ? arguments[1] : "";
  const int first = option.empty() ? 1 : 2;
  if (count < first + 2) {
    std::fputs(
        "usage: hash_files [--memory|--seconds|--in-memory] ALGORITHM[,ALGORITHM...] FILE...\n",
        stderr);
    return 2;
  }
  const swr::AlgoMask mask = ParseMask(arguments[first]);
  swr::PreferThroughput();
  if (option == "--in-memory") {
    std::printf("%.6f\n", SecondsInMemory(arguments[first + 1], mask));
    return 0;
  }
  if (option == "--seconds") {
    const auto start = Clock::now();
    swr::HashFile(swr::PathTextFromBytes(arguments[first + 1]), mask, {});
    std::printf("%.6f\n", SecondsSince(start));
    return 0;
  }
  const long before = ReadStatus("VmRSS");
  swr::DigestThreads threads;
  swr::FileHasher hasher(threads);
  bool succeeded = true;
  for (int i = first + 1; i < count; ++i) {
    succeeded = HashOne(hasher, arguments[i], mask) && succeeded;
  }
  if (option == "--memory") std::printf("%ld\n", ReadStatus("VmHWM") - before);
  return succeeded ? 0 : 1;
}
