// Shared by the modes: the objects that they use, the exit code, and the hashing of one selected
// file.
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

// The worst result so far, which becomes the exit code. The values are those of ExitCodes().
class ExitStatus {
 public:
  static constexpr int Good = 0;
  static constexpr int Mismatch = 1;  // also a missing or changed file
  static constexpr int Trouble = 2;

  void Note(int code);
  // Notes the code for a file that could not be read.
  void NoteError(uint32_t error);
  int Code() const { return code_.load(); }

 private:
  std::atomic<int> code_ = Good;
};

// The objects of one run, which must outlive it.
struct Run {
  const Options& options;
  Console& console;
  Progress& progress;
  OrderedWork& work;
  ExitStatus& status;
  // The run produced only errors: the file given with --output is left unchanged.
  bool hasOnlyErrors = false;
};

// The error for a file that was modified while it was read. Windows has no error code for that;
// this one is reserved for applications (bit 29 is set).
inline constexpr uint32_t ErrorFileChanged = 0x20000001;

// The message for an error code, including ErrorFileChanged and the code for a folder.
std::u16string ErrorMessage(uint32_t error);
// Writes "swrhash: NAME: message" to standard error.
void ReportError(Run& run, std::u16string_view name, uint32_t error);

// Hashes the file. If it changed meanwhile, the outcome has ErrorFileChanged and no digests.
swr::HashOutcome HashSelected(Run& run, WorkTools& tools, const SelectedFile& file,
                              swr::AlgoMask algorithms);

// Runs a job for each selected file, and reports an error for each name that can't be used.
// `makeJob` is called on one thread.
void RunOverFiles(Run& run, const std::function<std::unique_ptr<Job>(SelectedFile)>& makeJob);

// A job that only calls `report`: for messages that must appear in the order of the files.
std::unique_ptr<Job> MakeReport(std::function<void()> report);

// The modes. Each leaves its result in `run.status`.
void RunHash(Run& run);
void RunCheck(Run& run);
void RunExpect(Run& run);
void RunUpdate(Run& run);

}  // namespace cli
