#pragma once

// Texts that appear when the mouse rests on a control or on an area inside one.

#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// The system's tooltip window is owned by the top-level window of the first tool and is destroyed with it.
class ToolTips {
  public:
    // A control that is a child of `parent`.
    void AddControl(HWND parent, HWND control, const std::string& text) noexcept;
    void ChangeText(HWND parent, HWND control, const std::string& text) noexcept;

    // An area of `parent`, empty until it is moved. The caller numbers its areas.
    void AddArea(HWND parent, UINT_PTR number, const std::string& text) noexcept;

    // The same, without text, if `parent` passes its mouse messages to Relay. For AddArea the tooltip window
    // watches all messages of `parent`, which takes longer than handling most of them.
    void AddRelayedArea(HWND parent, UINT_PTR number) noexcept;
    bool HasTools() const noexcept { return window_ != nullptr; }
    void Relay(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) const noexcept;
    void ChangeAreaText(HWND parent, UINT_PTR number, const std::string& text) noexcept;
    void MoveArea(HWND parent, UINT_PTR number, const RECT& area) noexcept;

  private:
    void Create(HWND parent) noexcept;
    void Add(HWND parent, UINT_PTR tool, UINT flags, const std::string& text) noexcept;

    HWND window_ = nullptr;
};

} // namespace quarn
