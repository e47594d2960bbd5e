// The Expected hash box and the result line below it.
#pragma once

#include <string>

#include "app/verdicts/result_line.h"

namespace app {

// Implemented by the dialog's controls and by the tests. Called on the window's thread.
class ExpectedView {
 public:
  virtual ~ExpectedView() = default;

  virtual std::u16string ExpectedText() const = 0;
  // Causes a call of ExpectedHash::OnEdited, as an edit by the user does.
  virtual void SetExpectedText(const std::u16string& text) = 0;
  virtual void SetResultLine(const std::u16string& text, ResultKind kind) = 0;
};

}  // namespace app
