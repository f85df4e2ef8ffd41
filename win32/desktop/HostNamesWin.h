#pragma once

#include "desktop/HostNames.h"
#include "win32/NameLookUp.h"

#include <memory>

namespace quarn {

// The system's own look-up, while this thread's events run.
class HostNamesWin final : public HostNames {
  public:
    void LookUp(const std::string& host, Answer answer) override;
    void Cancel() override;

  private:
    void Tell(const std::string& address);

    std::unique_ptr<NameLookUp> lookUp_; // made when it is first needed
    Answer answer_;
};

} // namespace quarn
