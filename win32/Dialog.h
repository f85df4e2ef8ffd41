#pragma once

// A modal dialog, made from the template in the resources that has its form's name. The program's only dialog
// procedure connects the object when the dialog starts and passes its messages to virtual functions. The
// object outlives the dialog.
//
// Every dialog closes on Escape, is owned by the window that opened it, is in front of a window that is
// always on top, and appears in the middle of its owner.

#include "win32/UncaughtErrors.h"
#include "win32/WindowsHeaders.h"

#include <string>
#include <utility>

namespace quarn {

class Dialog {
  public:
    // The form's name is also the one under which errors of this dialog are reported.
    explicit Dialog(const char* formName) noexcept : formName_(formName) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog() = default;

    HWND Handle() const noexcept { return handle_; }

    // Returns the value given to Close when the dialog is closed. Throws the system's error if it cannot
    // open.
    INT_PTR ShowModal(HWND owner, bool topMost);

    // For a dialog that is a part of another one: creates it, hidden. It is destroyed with its parent.
    void CreateAsPage(HWND parent);

  protected:
    // The controls exist and the dialog is not visible yet.
    virtual void OnInit() {}

    // A button was pressed, an entry chosen, or a text changed.
    virtual void OnCommand(int /*id*/, int /*notification*/) {}
    virtual LRESULT OnNotify(NMHDR& /*notification*/) { return 0; }

    // The default button; Escape and the close box.
    virtual void OnOK() { Close(IDOK); }
    virtual void OnCancel() { Close(IDCANCEL); }

    // A key was pressed in the dialog; true: do nothing else with it.
    virtual bool OnKeyDown(WPARAM /*key*/) { return false; }

    // Called however the dialog was closed.
    virtual void OnDestroy() {}

    void Close(INT_PTR result) noexcept { EndDialog(handle_, result); }

    HWND Item(int id) const noexcept { return GetDlgItem(handle_, id); }
    std::string ItemText(int id) const;
    void SetItemText(int id, const std::string& text) noexcept;
    bool IsChecked(int id) const noexcept { return IsDlgButtonChecked(handle_, id) == BST_CHECKED; }
    void SetChecked(int id, bool checked) noexcept;
    void EnableItem(int id, bool enabled) noexcept { EnableWindow(Item(id), enabled ? TRUE : FALSE); }

    // Sets the keyboard focus to a field and selects its text; in OnInit it replaces the first field.
    void FocusItem(int id) noexcept;

    template<class Body>
    void Guarded(const char* handler, Body&& body) noexcept {
        Contain(formName_, handler, std::forward<Body>(body));
    }

  private:
    // Calls OnKeyDown for every key of a dialog before the dialog's own loop handles the key.
    class KeyFilter;

    static INT_PTR CALLBACK DialogProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void Initialise() noexcept;
    void DispatchCommand(int id, int notification) noexcept;
    void CentreOnOwner() noexcept;
    void TakeIconsOfOwner() noexcept;

    const char* formName_;
    HWND handle_ = nullptr;
    bool topMost_ = false;
    bool focusMoved_ = false;
};

} // namespace quarn
