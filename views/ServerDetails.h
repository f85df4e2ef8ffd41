#pragma once

// The players and the variables of the current server, below the server list. Both lists are rebuilt from the
// record, never edited in place.

#include "views/MainFormContext.h"

namespace quarn {

class ServerDetails {
  public:
    explicit ServerDetails(const MainFormContext& form) : form_(form) {}

    void RefreshPlayers();
    void RefreshVariables();

    void Clear();

  private:
    MainFormContext form_;
};

} // namespace quarn
