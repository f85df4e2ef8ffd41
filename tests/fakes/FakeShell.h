#pragma once

#include "base/RunTimeError.h"
#include "desktop/Shell.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

class FakeShell : public Shell {
  public:
    std::vector<Request> opened;
    std::optional<std::string> clipboard; // empty: never set
    std::optional<ErrorNumber> openFault;
    bool clipboardBlocked = false;

    // Runs while the shell starts a program, which may let events run.
    std::function<void()> whileOpening;

    void Open(const Request& request) override {
        if (whileOpening)
            whileOpening();
        if (openFault)
            throw RunTimeError(*openFault);
        opened.push_back(request);
        if (whileOpening)
            whileOpening();
    }
    void SetClipboardText(const std::string& text) override {
        if (clipboardBlocked)
            throw RunTimeError(ErrorNumber::CannotOpenClipboard);
        clipboard = text;
    }
};

} // namespace quarn
