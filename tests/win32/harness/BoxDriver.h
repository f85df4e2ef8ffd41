#pragma once

#include "win32/WindowsHeaders.h"

#include <concepts>
#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace quarn {

// Answers the boxes that a modal call opens, from inside the call's own message loop. Each step waits for the
// box it is about: one that is on top of the owner and not the box of the step before. What is left open when
// no step answers it is cancelled after a while, so that a test fails instead of standing still.
class BoxDriver {
  public:
    struct Step {
        template<std::invocable<HWND> Action>
        Step(Action action) : act(std::move(action)) {} // NOLINT: a plain action is a step
        Step(std::function<bool(HWND box)> when, std::function<void(HWND box)> what)
            : ready(std::move(when)), act(std::move(what)) {}

        std::function<bool(HWND box)> ready = [](HWND) { return true; };
        std::function<void(HWND box)> act;
    };

    BoxDriver(HWND owner, std::deque<Step> steps) : owner_(owner), steps_(std::move(steps)) {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, 10, &OnTimer);
    }
    BoxDriver(const BoxDriver&) = delete;
    BoxDriver& operator=(const BoxDriver&) = delete;
    ~BoxDriver() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }

    std::size_t StepsLeft() const noexcept { return steps_.size(); }

    static std::string TextOf(HWND window) {
        std::string text(1024, '\0');
        text.resize(SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
        return text;
    }

    static std::string TextOf(HWND box, int control) { return TextOf(GetDlgItem(box, control)); }

    static void Press(HWND box, int button) {
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    }

    static void PressKey(HWND window, WPARAM key) {
        PostMessageA(window, WM_KEYDOWN, key, 1);
        PostMessageA(window, WM_KEYUP, key, 1);
    }

  private:
    static constexpr int MostLooks = 1000;

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) { current_->Look(); }

    // A window to work in, not a tooltip or a list that has dropped down.
    static bool IsBox(HWND window) {
        return IsWindowVisible(window) && IsWindowEnabled(window) && GetWindow(window, GW_OWNER) != nullptr &&
               (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) == 0;
    }

    HWND Box() const {
        HWND box = nullptr;
        const auto look = [](HWND window, LPARAM found) -> BOOL {
            if (!IsBox(window))
                return TRUE;
            *reinterpret_cast<HWND*>(found) = window;
            return FALSE;
        };
        EnumThreadWindows(GetWindowThreadProcessId(owner_, nullptr), look, reinterpret_cast<LPARAM>(&box));
        return box;
    }

    void Look() {
        const HWND box = Box();
        if (box == nullptr)
            return;
        if (box != answered_ && !steps_.empty() && steps_.front().ready(box)) {
            answered_ = box;
            const Step step = std::move(steps_.front());
            steps_.pop_front();
            // The window manager may have handed the focus elsewhere, late, for a window that is gone by now.
            if (GetActiveWindow() != box)
                SetActiveWindow(box);
            step.act(box);
        }
        if (++looks_ > MostLooks)
            EndDialog(box, IDCANCEL);
    }

    inline static BoxDriver* current_ = nullptr;
    HWND owner_;
    std::deque<Step> steps_;
    UINT_PTR timer_ = 0;
    HWND answered_ = nullptr;
    int looks_ = 0;
};

} // namespace quarn
