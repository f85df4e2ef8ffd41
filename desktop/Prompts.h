#pragma once

// What the program asks or tells the user in a box of its own. All calls are modal and return when the box
// is closed; events run meanwhile. A box that closes because the program ends counts as cancelled.

#include "base/Scope.h"

#include <string>

namespace quarn {

class Prompts {
  public:
    virtual ~Prompts() = default;

    // Critical-stop icon and an OK button.
    void ShowError(const std::string& text, const std::string& title) {
        const Restore open(open_, open_ + 1);
        RunErrorBox(text, title);
    }

    // Yes and No buttons; true on Yes.
    bool AskYesNo(const std::string& text, const std::string& title) {
        const Restore open(open_, open_ + 1);
        return RunYesNoBox(text, title);
    }

    // A line of text; empty when cancelled.
    std::string AskText(const std::string& prompt, const std::string& title) {
        const Restore open(open_, open_ + 1);
        return RunTextBox(prompt, title);
    }

    // A name for a file to be saved, asked with an overwrite question and without a read-only box; empty
    // when cancelled. The filter has the form "Text|*.txt|All|*.*".
    std::string AskSaveFile(const std::string& title, const std::string& filter) {
        const Restore open(open_, open_ + 1);
        return RunSaveFileBox(title, filter);
    }

    // A folder, with one selected beforehand; empty when cancelled.
    std::string AskFolder(const std::string& title, const std::string& preselected) {
        const Restore open(open_, open_ + 1);
        return RunFolderBox(title, preselected);
    }

    // A box is open at this moment.
    bool IsOpen() const noexcept { return open_ > 0; }

  private:
    virtual void RunErrorBox(const std::string& text, const std::string& title) = 0;
    virtual bool RunYesNoBox(const std::string& text, const std::string& title) = 0;
    virtual std::string RunTextBox(const std::string& prompt, const std::string& title) = 0;
    virtual std::string RunSaveFileBox(const std::string& title, const std::string& filter) = 0;
    virtual std::string RunFolderBox(const std::string& title, const std::string& preselected) = 0;

    int open_ = 0;
};

} // namespace quarn
