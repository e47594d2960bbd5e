// The controls of the expected hash: the box and the result line.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/screen/expected_view.h"
#include "app/window/result_control_win.h"

namespace app {

class ExpectedControls final : public ExpectedView {
 public:
  void Attach(HWND dialog, int dpi);
  void ChangeDpi(int dpi) { result_.ChangeDpi(dpi); }
  void DrawResult(const DRAWITEMSTRUCT& item, bool highContrast) const {
    result_.Draw(item, highContrast);
  }
  void RedrawResult() const;

  std::u16string ExpectedText() const override;
  void SetExpectedText(const std::u16string& text) override;
  void SetResultLine(const std::u16string& text, ResultKind kind) override {
    result_.Set(text, kind);
  }

 private:
  HWND dialog_ = nullptr;
  ResultControl result_;
};

}  // namespace app
