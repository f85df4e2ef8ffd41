#pragma once

#include <string>

namespace quarn {

// Show states of a started program, with the platform's numbers.
enum class ShowState { Normal = 1, Show = 5 };

class Shell {
  public:
    virtual ~Shell() = default;

    struct Request {
        std::string verb = "open";
        std::string file; // a program, a document or a URL
        std::string parameters;
        std::string folder;        // working directory; empty: the process's own
        bool ownedByWindow = true; // the main window is the owner of what the shell may show
        ShowState show = ShowState::Normal;
    };

    // Asks the shell. Its result is not returned, because no caller needs it.
    virtual void Open(const Request& request) = 0;

    // Puts text on the clipboard, replacing its content; error 521 if it cannot be opened.
    virtual void SetClipboardText(const std::string& text) = 0;
};

} // namespace quarn
