#pragma once

#include "desktop/Prompts.h"
#include "win32/OwnerWindow.h"

namespace quarn {

// The system's boxes, and an input box of our own. Each is owned by the main window, or by the box that is
// open on top of it, and is top-most when the main window is.
class PromptsWin final : public Prompts {
  public:
    explicit PromptsWin(const OwnerWindow& owner) noexcept : owner_(owner) {}

    // Closes the box or dialog that is open on top of the main window, as cancelled; false when there is
    // none. It is gone when the call that opened it returns. Where several stand on each other, one call
    // closes the uppermost.
    bool CancelOpenBox() noexcept;

  private:
    void RunErrorBox(const std::string& text, const std::string& title) override;
    bool RunYesNoBox(const std::string& text, const std::string& title) override;
    std::string RunTextBox(const std::string& prompt, const std::string& title) override;
    std::string RunSaveFileBox(const std::string& title, const std::string& filter) override;
    std::string RunFolderBox(const std::string& title, const std::string& preselected) override;

    int MessageBoxOf(const std::string& text, const std::string& title, UINT style);

    const OwnerWindow& owner_;
};

} // namespace quarn
