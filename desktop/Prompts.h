#pragma once

// What the program asks or tells the user in a message box or a system dialog. All calls are modal and return
// when it is closed; events run meanwhile. While the program closes, nothing more is shown: every call
// returns at once as cancelled, and so does one that is already open, whatever the answer.

#include "base/Scope.h"

#include <functional>
#include <string>

namespace quarn {

class Prompts {
  public:
    // The button that Enter presses.
    enum class DefaultButton { Yes, No };

    virtual ~Prompts() = default;

    // Critical-stop icon and an OK button.
    void ShowError(const std::string& text, const std::string& title) {
        Run<bool>([&] {
            RunErrorBox(text, title);
            return true;
        });
    }

    // Yes and No buttons; true on Yes.
    bool AskYesNo(const std::string& text, const std::string& title,
                  DefaultButton defaultButton = DefaultButton::Yes) {
        return Run<bool>([&] { return RunYesNoBox(text, title, defaultButton); });
    }

    // A line of text; empty when cancelled.
    std::string AskText(const std::string& prompt, const std::string& title) {
        return Run<std::string>([&] { return RunTextBox(prompt, title); });
    }

    // A file name for saving, with a question before an existing file is overwritten and without a read-only
    // box; empty if cancelled. The filter has the form "Text|*.txt|All|*.*".
    std::string AskSaveFile(const std::string& title, const std::string& filter) {
        return Run<std::string>([&] { return RunSaveFileBox(title, filter); });
    }

    // A folder; the given one is preselected. Empty if cancelled.
    std::string AskFolder(const std::string& title, const std::string& preselected) {
        return Run<std::string>([&] { return RunFolderBox(title, preselected); });
    }

    // If set, called for each box. It must call `show`, which returns when the box is closed.
    std::function<void(const std::function<void()>& show)> AroundEach;

    // A message box or dialog is open at this moment.
    bool IsOpen() const noexcept { return open_ > 0; }

    // The program closes; or, for its last question, message boxes are shown once more.
    void SetClosing(bool closing) noexcept { closing_ = closing; }

  private:
    template<class Answer, class Body>
    Answer Run(Body&& body) {
        if (closing_)
            return Answer();
        const Restore open(open_, open_ + 1);
        Answer answer{};
        const auto show = [&] { answer = body(); };
        if (AroundEach)
            AroundEach(show);
        else
            show();
        return closing_ ? Answer() : answer;
    }

    virtual void RunErrorBox(const std::string& text, const std::string& title) = 0;
    virtual bool RunYesNoBox(const std::string& text, const std::string& title,
                             DefaultButton defaultButton) = 0;
    virtual std::string RunTextBox(const std::string& prompt, const std::string& title) = 0;
    virtual std::string RunSaveFileBox(const std::string& title, const std::string& filter) = 0;
    virtual std::string RunFolderBox(const std::string& title, const std::string& preselected) = 0;

    int open_ = 0;
    bool closing_ = false;
};

} // namespace quarn
