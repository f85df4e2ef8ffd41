#pragma once

// "Renew": asks the current game's master server for its list. There is no timer and no retry; each datagram
// of the reply is listed as it arrives, also while a scan runs.

#include "views/MainFormContext.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <string>

namespace quarn {

class MasterQuery {
  public:
    MasterQuery(const MainFormContext& form, ServerListView& servers) : form_(form), servers_(servers) {}

    void mnuServerListGet_Click();
    void sckMaster_DataArrival(std::int32_t bytesTotal);

  private:
    void ParseReply(std::string datagram);

    MainFormContext form_;
    ServerListView& servers_;
};

} // namespace quarn
