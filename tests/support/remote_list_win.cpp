#include "tests/support/remote_list_win.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>

#include "swr/system/wide_text_win.h"

namespace swr::testing {
namespace {

constexpr UINT answerTimeout = 60'000;

// The request for one cell, which the list fills in.
template <int capacity>
struct Cell {
  LVITEMW item = {};
  wchar_t text[capacity] = {};

  // Builds the request for a cell that will be at this address.
  void Ask(int column, void* address) {
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(address) + offsetof(Cell, text));
    item.cchTextMax = capacity;
  }
  std::u16string Text() const { return FromWide({text, wcsnlen(text, capacity)}); }
  bool MayBeCut() const { return wcsnlen(text, capacity) + 1 >= capacity; }
};

// Most texts fit into the small kind, of which many are requested at once.
using SmallCell = Cell<264>;
using LargeCell = Cell<0x10000>;
constexpr size_t batchSize = 512;
constexpr size_t memorySize = std::max(batchSize * sizeof(SmallCell), sizeof(LargeCell));

}  // namespace

LRESULT AskWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, answerTimeout, &answer)) {
    throw std::runtime_error("the window does not answer message " + std::to_string(message) +
                             ", error " + std::to_string(GetLastError()));
  }
  return static_cast<LRESULT>(answer);
}

RemoteMemory::RemoteMemory(HWND window, size_t size) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
  if (!process) throw std::runtime_error("the process of the window cannot be opened");
  address = VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (!address) {
    CloseHandle(process);
    throw std::runtime_error("no memory can be allocated in the process of the window");
  }
}

RemoteMemory::~RemoteMemory() {
  VirtualFreeEx(process, address, 0, MEM_RELEASE);
  CloseHandle(process);
}

void RemoteMemory::Write(size_t offset, const void* data, size_t size) const {
  if (!WriteProcessMemory(process, At(offset), data, size, nullptr)) {
    throw std::runtime_error("the process of the window cannot be written to");
  }
}

void RemoteMemory::Read(size_t offset, void* data, size_t size) const {
  if (!ReadProcessMemory(process, At(offset), data, size, nullptr)) {
    throw std::runtime_error("the process of the window cannot be read");
  }
}

RemoteList::RemoteList(HWND window) : list(window), memory(window, memorySize) {}

int RemoteList::ItemCount() const { return static_cast<int>(AskWindow(list, LVM_GETITEMCOUNT)); }

int RemoteList::ColumnCount() const {
  const LRESULT header = AskWindow(list, LVM_GETHEADER);
  return static_cast<int>(AskWindow(reinterpret_cast<HWND>(header), HDM_GETITEMCOUNT));
}

std::vector<std::u16string> RemoteList::ColumnHeadings() const {
  struct Heading {
    LVCOLUMNW column = {};
    wchar_t text[256] = {};
  };
  std::vector<std::u16string> headings;
  const int count = ColumnCount();
  for (int column = 0; column < count; ++column) {
    Heading heading;
    heading.column.mask = LVCF_TEXT;
    heading.column.pszText = static_cast<wchar_t*>(memory.At(offsetof(Heading, text)));
    heading.column.cchTextMax = 256;
    memory.Write(0, &heading, sizeof(heading));
    AskWindow(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
              reinterpret_cast<LPARAM>(memory.At(0)));
    memory.Read(0, &heading, sizeof(heading));
    headings.push_back(FromWide({heading.text, wcsnlen(heading.text, 256)}));
  }
  return headings;
}

std::u16string RemoteList::ItemText(int row, int column) const {
  const auto cell = std::make_unique<LargeCell>();
  cell->Ask(column, memory.At(0));
  memory.Write(0, cell.get(), sizeof(LargeCell));
  AskWindow(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
            reinterpret_cast<LPARAM>(memory.At(0)));
  memory.Read(0, cell.get(), sizeof(LargeCell));
  return cell->Text();
}

std::vector<std::vector<std::u16string>> RemoteList::Texts(int firstRow, int rowCount,
                                                           const std::vector<int>& columns) const {
  std::vector<std::vector<std::u16string>> rows(static_cast<size_t>(std::max(rowCount, 0)));
  const size_t cellCount = rows.size() * columns.size();
  std::vector<SmallCell> cells;
  for (size_t first = 0; first < cellCount; first += cells.size()) {
    cells.assign(std::min(batchSize, cellCount - first), {});
    const auto rowOf = [&](size_t i) {
      return firstRow + static_cast<int>((first + i) / columns.size());
    };
    const auto columnOf = [&](size_t i) { return columns[(first + i) % columns.size()]; };

    for (size_t i = 0; i < cells.size(); ++i) {
      cells[i].Ask(columnOf(i), memory.At(i * sizeof(SmallCell)));
    }
    memory.Write(0, cells.data(), cells.size() * sizeof(SmallCell));
    for (size_t i = 0; i < cells.size(); ++i) {
      if (!SendNotifyMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(rowOf(i)),
                              reinterpret_cast<LPARAM>(memory.At(i * sizeof(SmallCell))))) {
        throw std::runtime_error("no message can be sent to the list");
      }
    }
    AskWindow(list, WM_NULL);  // answered after the requests that were sent without waiting
    memory.Read(0, cells.data(), cells.size() * sizeof(SmallCell));

    for (size_t i = 0; i < cells.size(); ++i) {
      rows[(first + i) / columns.size()].push_back(
          cells[i].MayBeCut() ? ItemText(rowOf(i), columnOf(i)) : cells[i].Text());
    }
  }
  return rows;
}

std::vector<int> RemoteList::SelectedIndexes() const {
  std::vector<int> indexes;
  WPARAM last = static_cast<WPARAM>(-1);  // start before the first item
  for (;;) {
    const auto next = static_cast<int>(AskWindow(list, LVM_GETNEXTITEM, last, LVNI_SELECTED));
    if (next < 0) return indexes;
    indexes.push_back(next);
    last = static_cast<WPARAM>(next);
  }
}

}  // namespace swr::testing
