// Which files a run is about: what the user named, the names in --files-from, and what lies below
// folders.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "cli/options/options.h"

namespace cli {

struct SelectedFile {
  std::u16string path;  // as given, joined with what was found below it
  bool isStandardInput = false;
  uint64_t size = 0;  // bytes, where sizes were asked for and could be had
};

struct SelectionCallbacks {
  std::function<void(SelectedFile)> found;
  // Something that was named or lies below a named folder and can't be taken, with a Windows error
  // code: 267 for a folder where none was wanted.
  std::function<void(const std::u16string& path, uint32_t error)> failed;
  // A list of names that can't be read, with a Windows error code. Only called for --files-from.
  std::function<void(const std::u16string& path, uint32_t error)> listFailed;
};

// Reports the files in order, on the calling thread, until all are through or `cancel` is set.
void SelectFiles(const Options& options, bool withSizes, const std::atomic<bool>& cancel,
                 const SelectionCallbacks& callbacks);

// Whether SelectFiles can be called a second time with the same result: not when names come from
// standard input.
bool CanSelectAgain(const Options& options);

// The name by which standard input goes among files.
inline constexpr std::u16string_view StandardInputName = u"-";

}  // namespace cli
