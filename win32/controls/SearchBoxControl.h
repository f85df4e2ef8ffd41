#pragma once

// Shows a TextBox: a field that tells of every change of its text. It has the model's name for assistive
// technology, by a label of no size in front of it.

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

    // Takes the model's text and visibility. True if it has appeared or vanished.
    bool Flush();

    // The field has told its parent of a change: the model gets the text.
    void TakeText();

    // Puts the focus on the field, with its text selected.
    void Focus() noexcept;

    std::function<void()> Changed;

  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::string ShownText() const;
    void AddLabel() noexcept;

    TextBox& model_;
    HWND label_ = nullptr; // from the first time that the field is shown
    int height_ = 0;
    bool shown_ = false;
};

} // namespace quarn
