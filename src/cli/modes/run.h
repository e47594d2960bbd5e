// What the modes of the program share: the parts that they work with, the exit code, and the
// hashing of one selected file.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "cli/options/options.h"
#include "cli/output/console.h"
#include "cli/output/progress.h"
#include "cli/schedule/ordered_work.h"
#include "cli/select/file_selection.h"
#include "swr/hash/hash_file.h"

namespace cli {

// The worst of what happened, which becomes the exit code. The values are those of ExitCodes().
class ExitStatus {
 public:
  static constexpr int Good = 0;
  static constexpr int Mismatch = 1;  // also a missing or changed file
  static constexpr int Trouble = 2;

  void Note(int code);
  // The code for a file that could not be read.
  void NoteError(uint32_t error);
  int Code() const { return code_.load(); }

 private:
  std::atomic<int> code_ = Good;
};

// The parts of one run. They outlive it.
struct Run {
  const Options& options;
  Console& console;
  Progress& progress;
  OrderedWork& work;
  ExitStatus& status;
  // Nothing came of it but errors: a file in the place of standard output stays as it was.
  bool isFruitless = false;
};

// The error of a file that was written to while it was read. No Windows error code says that; this
// one is free for applications (its bit 29 is set).
inline constexpr uint32_t ErrorFileChanged = 0x20000001;

// The words for an error code, those of ErrorFileChanged and of a folder included.
std::u16string ErrorWords(uint32_t error);
// "swrhash: NAME: words" on standard error.
void ComplainOf(Run& run, std::u16string_view name, uint32_t error);

// Hashes the file. One that changed meanwhile has no digests but ErrorFileChanged.
swr::HashOutcome HashSelected(Run& run, WorkTools& tools, const SelectedFile& file,
                              swr::AlgoMask algorithms);

// Runs a job for each selected file, and complains of what can't be taken. `makeJob` is called on
// one thread.
void RunOverFiles(Run& run, const std::function<std::unique_ptr<Job>(SelectedFile)>& makeJob);

// A job whose report calls a function: for what has to be said in its place in the order.
std::unique_ptr<Job> MakeReport(std::function<void()> report);

// The modes. Each does its work and leaves what came of it in `run.status`.
void RunHash(Run& run);
void RunCheck(Run& run);
void RunExpect(Run& run);
void RunUpdate(Run& run);

}  // namespace cli
