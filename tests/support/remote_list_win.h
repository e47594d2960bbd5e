// Reads a report-mode list view that belongs to another process, as a user would see it: headings,
// cells, selection. It only sends window messages and changes nothing.
#pragma once

#include "swr/system/windows_api_win.h"

// After the system header, which it needs.
#include <commctrl.h>

#include <string>
#include <vector>

namespace swr::testing {

// Sends a message to a window of another process and waits up to a minute for the answer. Throws
// std::runtime_error if there is none.
LRESULT AskWindow(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Memory in the process that owns a window, for the structures and texts of messages.
class RemoteMemory {
 public:
  // Throws std::runtime_error if the process can't be opened or has no memory left.
  RemoteMemory(HWND window, size_t size);
  ~RemoteMemory();
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  // The address in the other process.
  void* At(size_t offset) const { return static_cast<char*>(address) + offset; }

  // Both throw std::runtime_error if the other process is gone.
  void Write(size_t offset, const void* data, size_t size) const;
  void Read(size_t offset, void* data, size_t size) const;

 private:
  HANDLE process = nullptr;
  void* address = nullptr;
};

class RemoteList {
 public:
  // Throws std::runtime_error if the list's process can't be read. Every other function throws it
  // if the list does not answer.
  explicit RemoteList(HWND window);

  int ItemCount() const;
  int ColumnCount() const;
  std::vector<std::u16string> ColumnHeadings() const;

  // The text of one cell; empty if there is no such cell.
  std::u16string ItemText(int row, int column) const;

  // The texts of these columns in rowCount rows from firstRow on, row by row. Much cheaper than one
  // cell at a time. The texts are those of one moment only if the list does not change meanwhile.
  std::vector<std::vector<std::u16string>> Texts(int firstRow, int rowCount,
                                                 const std::vector<int>& columns) const;

  std::vector<int> SelectedIndexes() const;

 private:
  HWND list;
  RemoteMemory memory;
};

}  // namespace swr::testing
