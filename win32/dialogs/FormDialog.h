#pragma once

#include "win32/Dialog.h"

namespace quarn {

// A dialog that shows one of the program's forms and that the form closes.
class FormDialog : public Dialog {
  public:
    using Dialog::Dialog;

    void Unload() noexcept { Close(IDOK); }
};

} // namespace quarn
