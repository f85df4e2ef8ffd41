#pragma once

// Shows a TextBox: a field that reports every change of its text. A label without size before it gives it the
// model's name for screen readers.

#include "controls/TextBox.h"
#include "win32/Dpi.h"
#include "win32/controls/Control.h"

#include <functional>
#include <string>

namespace quarn {

class SearchBoxControl final : public Control {
  public:
    explicit SearchBoxControl(TextBox& model) noexcept : model_(model) {}

    void Create(HWND parent, int id);
    void SetLook(Dpi dpi, HFONT font);

    // In pixels, for one line of the font.
    int BestHeight() const noexcept { return height_; }

    // Applies the model's text and visibility. True if the field has appeared or disappeared.
    bool Flush();

    // The field has reported a change to its parent: stores the text in the model.
    void TakeText();

    // Sets the focus to the field and selects its text.
    void Focus() noexcept;

    std::function<void()> Changed;

  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::string ShownText() const;
    void AddLabel() noexcept;

    TextBox& model_;
    HWND label_ = nullptr; // since the field was first shown
    int height_ = 0;
    bool shown_ = false;
};

} // namespace quarn
