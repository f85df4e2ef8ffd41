#pragma once

#include "desktop/Prompts.h"
#include "win32/OwnerWindow.h"

namespace quarn {

// The system's message boxes and dialogs, and an input box of our own. Each is owned by the main window, or
// by the one that is open on top of it, and is topmost if the main window is.
class PromptsWin final : public Prompts {
  public:
    explicit PromptsWin(const OwnerWindow& owner) noexcept : owner_(owner) {}

    // Cancels the message box or dialog that waits for the user, the program's or the system's; false if
    // there is none. It is closed when the call that opened it returns. If several are open on top of each
    // other, one call cancels the uppermost. If one is still open at the next call, a stronger method is
    // used.
    bool CancelOpenBox() noexcept;

    // A file or folder dialog of the system is open.
    bool SystemDialogIsOpen() const noexcept { return systemDialogs_ > 0; }

  private:
    void RunErrorBox(const std::string& text, const std::string& title) override;
    bool RunYesNoBox(const std::string& text, const std::string& title, DefaultButton defaultButton) override;
    std::string RunTextBox(const std::string& prompt, const std::string& title) override;
    std::string RunSaveFileBox(const std::string& title, const std::string& filter) override;
    std::string RunFolderBox(const std::string& title, const std::string& preselected) override;

    int MessageBoxOf(const std::string& text, const std::string& title, UINT style);

    const OwnerWindow& owner_;
    int systemDialogs_ = 0;    // that are open
    HWND cancelled_ = nullptr; // the last one, and how often
    int attempts_ = 0;
};

} // namespace quarn
