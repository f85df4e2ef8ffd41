#pragma once

#include "desktop/Shell.h"
#include "win32/OwnerWindow.h"

namespace quarn {

class ShellWin final : public Shell {
  public:
    explicit ShellWin(const OwnerWindow& owner) noexcept : owner_(owner) {}

    void Open(const Request& request) override;
    void SetClipboardText(const std::string& text) override;

  private:
    const OwnerWindow& owner_;
};

} // namespace quarn
