// Hashes one file as the program's worker does, as a command that can be timed in comparison with
// the tools of Windows:
//   hash_file ALGORITHM FILE     prints the digest and the file
#include "swr/hash/hash_file.h"

#include <cstdio>
#include <string>

#include "swr/hash/digest_text.h"
#include "swr/system/thread_schedule.h"
#include "swr/system/wide_text_win.h"

int wmain(int count, wchar_t** arguments) {
  const std::wstring name = count == 3 ? arguments[1] : L"";
  const auto algorithm = swr::ParseAlgoName(std::string(name.begin(), name.end()));
  if (!algorithm) {
    std::fprintf(stderr, "usage: hash_file ALGORITHM FILE\n");
    return 2;
  }
  swr::PreferThroughput();
  const swr::HashOutcome outcome =
      swr::HashFile(swr::FromWide(arguments[2]), swr::MaskOf(*algorithm), {});
  if (outcome.error != 0) {
    std::fprintf(stderr, "hash_file: error %u\n", static_cast<unsigned>(outcome.error));
    return 1;
  }
  std::printf("%s  %ls\n",
              swr::DigestToHex(outcome.digests[swr::IndexOf(*algorithm)], false).c_str(),
              arguments[2]);
  return 0;
}
