// The editing keys. They act on the edit box that has the focus, if there is one.
#pragma once

namespace app {

// Implemented by the dialog and by the tests. Called on the window's thread.
class EditFocus {
 public:
  virtual ~EditFocus() = default;

  // Pastes into the focused edit box. False when no edit box has the focus.
  virtual bool PasteIntoFocusedEdit() = 0;
  // Copies the selected text of the focused edit box. False when no edit box has the focus.
  virtual bool CopyFromFocusedEdit() = 0;
  // Selects all text of the focused edit box, or else all rows of the list.
  virtual void SelectAll() = 0;
};

}  // namespace app
