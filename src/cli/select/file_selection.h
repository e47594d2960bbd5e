// Selects the files of a run: the operands, the names from --files-from, and the files in folders.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "cli/options/options.h"

namespace cli {

struct SelectedFile {
  std::u16string path;  // the operand as given, and for a file in a folder the path below it
  bool isStandardInput = false;
  uint64_t size = 0;  // bytes; 0 if sizes were not requested or not available
};

struct SelectionCallbacks {
  std::function<void(SelectedFile)> found;
  // A name that can't be used, or a folder that can't be listed, with a Windows error code.
  std::function<void(const std::u16string& path, uint32_t error)> failed;
  // A list of names that can't be read, with a Windows error code. Only called for --files-from.
  std::function<void(const std::u16string& path, uint32_t error)> listFailed;
};

// Reports the files in order, on the calling thread, until there are no more or `cancel` is set.
void SelectFiles(const Options& options, bool withSizes, const std::atomic<bool>& cancel,
                 const SelectionCallbacks& callbacks);

// The name of standard input.
inline constexpr std::u16string_view StandardInputName = u"-";

}  // namespace cli
