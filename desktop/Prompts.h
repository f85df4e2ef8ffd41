#pragma once

// What the program asks or tells the user in a box of its own. All calls are modal and return when the box
// is closed; events run meanwhile. A box that closes because the program ends counts as cancelled.

#include <string>

namespace quarn {

class Prompts {
  public:
    virtual ~Prompts() = default;

    // Critical-stop icon and an OK button.
    virtual void ShowError(const std::string& text, const std::string& title) = 0;

    // Yes and No buttons; true on Yes.
    virtual bool AskYesNo(const std::string& text, const std::string& title) = 0;

    // A line of text; empty when cancelled.
    virtual std::string AskText(const std::string& prompt, const std::string& title) = 0;

    // A name for a file to be saved, asked with an overwrite question and without a read-only box; empty
    // when cancelled. The filter has the form "Text|*.txt|All|*.*".
    virtual std::string AskSaveFile(const std::string& title, const std::string& filter) = 0;

    // A folder, with one selected beforehand; empty when cancelled.
    virtual std::string AskFolder(const std::string& title, const std::string& preselected) = 0;
};

} // namespace quarn
