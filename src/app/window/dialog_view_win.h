// The View of the main window: each verb is one or two messages to a control.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>
#include <vector>

#include "app/desktop/taskbar_progress_win.h"
#include "app/window/list_control_win.h"
#include "app/window/view.h"

namespace app {

class DialogView final : public View {
 public:
  // Binds the view to the dialog's controls, while it is being set up.
  void Attach(HWND dialog, int dpi);

  void SetRowCount(size_t count) override { list.SetRowCount(count); }
  void RedrawRow(size_t index) override { list.RedrawRow(index); }
  void RedrawRows() override { list.RedrawRows(); }
  std::vector<size_t> SelectedRows() const override { return list.SelectedRows(); }
  void ClearSelection() override { list.ClearSelection(); }
  void SelectRow(size_t index) override { list.SelectRow(index); }
  void SelectAll() override;
  void SetColumns(const std::vector<ColumnSpec>& columns) override { list.SetColumns(columns); }
  std::vector<uint32_t> ColumnWidths() const override { return list.ColumnWidths(); }
  void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) override;
  void ShowOptions(const OptionChecks& checks) override;
  std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) override;
  void SetStatusText(const std::u16string& text) override;
  void ShowProgress(const std::optional<ProgressFigures>& figures) override;

  ListControl list;
  TaskbarProgress taskbar;

 private:
  void Show(int control, bool shows);

  HWND dialog_ = nullptr;
  std::u16string statusText_;
};

}  // namespace app
