// The View of the main window: each verb is one or two messages to a control.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>
#include <vector>

#include "app/desktop/taskbar_progress_win.h"
#include "app/window/dialog_layout_win.h"
#include "app/window/list_control_win.h"
#include "app/window/result_control_win.h"
#include "app/window/view.h"

namespace app {

class DialogView final : public View {
 public:
  // Binds the view to the dialog's controls, while it is being set up. The size that the dialog has
  // is its smallest one.
  void Attach(HWND dialog, int dpi);
  // Stores where the controls stand; later sizes are measured against this.
  void CaptureLayout() { layout_.Capture(dialog_); }
  void ApplyLayout() const { layout_.Apply(dialog_, bannerShows_, dpi_); }
  // Scales column widths, fonts and the smallest size. The layout follows once the window has its
  // new size.
  void ChangeDpi(int dpi);
  SIZE SmallestSize() const { return smallestSize_; }

  void SetRowCount(size_t count) override { list.SetRowCount(count); }
  void RedrawRow(size_t index) override { list.RedrawRow(index); }
  void RedrawRows() override { list.RedrawRows(); }
  std::vector<size_t> SelectedRows() const override { return list.SelectedRows(); }
  size_t SelectedRowCount() const override { return list.SelectedRowCount(); }
  void ClearSelection() override { list.ClearSelection(); }
  void SelectRow(size_t index) override { list.SelectRow(index); }
  void ScrollToRow(size_t index) override { list.ScrollToRow(index); }
  void SelectAll() override;
  bool PasteIntoFocusedEdit() override;
  bool CopyFromFocusedEdit() override;
  void SetColumns(const std::vector<ColumnSpec>& columns) override { list.SetColumns(columns); }
  void ShowSortMark(std::optional<size_t> column, bool descending) override {
    list.ShowSortMark(column, descending);
  }
  std::vector<uint32_t> ColumnWidths() const override { return list.ColumnWidths(); }
  void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) override;
  bool IsAlgoChecked(swr::AlgoId id) const override;
  void ShowOptions(const OptionChecks& checks) override;
  void RemoveShellEntryCommands() override;
  void SetProgramFolderText(const std::u16string& text) override;
  std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) override;
  std::u16string ExpectedText() const override;
  void SetExpectedText(const std::u16string& text) override;
  void SetResultLine(const std::u16string& text, ResultKind kind) override {
    result.Set(text, kind);
  }
  void ShowBanner(const std::u16string& markup) override;
  void HideBanner() override;
  void SetDetails(const std::u16string& text, const DetailButtons& buttons) override;
  std::optional<ListMenuChoice> ChooseListCommand(const ListMenu& menu,
                                                  std::optional<ScreenPoint> at) override;
  void SetStatusText(const std::u16string& text) override;
  void ShowProgress(const std::optional<ProgressFigures>& figures) override;
  std::optional<WindowPlacement> Placement() const override;
  bool MoveTo(const WindowPlacement& placement) override;

  ListControl list;
  ResultControl result;
  TaskbarProgress taskbar;

 private:
  void Show(int control, bool shows);
  void Enable(int control, bool enabled);
  void MoveFocusFrom(HWND control) const;

  HWND dialog_ = nullptr;
  int dpi_ = 96;
  SIZE smallestSize_ = {};
  DialogLayout layout_;
  bool bannerShows_ = false;
  std::u16string statusText_;
  std::u16string detailsText_;
};

}  // namespace app
