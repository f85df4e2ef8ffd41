#pragma once

// "Renew": asks the current game's master server for its list. There is no retry; each datagram of the reply
// is listed as it arrives, also during a scan. Limits bound what a flood on the master's port can cost.
//
// Two extras: ListOnce adds no address that is already listed. AskMasterFirst keeps the list until a reply
// contains an address, and says so if the master does not answer.

#include "views/ListedAddresses.h"
#include "views/MainFormContext.h"
#include "views/ServerListView.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace quarn {

class MasterQuery {
  public:
    // Replies that wait while a list is being read, written or listed; more are dropped.
    static constexpr std::size_t MostWaitingBytes = 1U << 20;

    // The most servers that one "Renew" may add; no game has as many.
    static constexpr std::int32_t MostServers = 100'000;

    MasterQuery(const MainFormContext& form, ServerListView& servers);

    void mnuServerListGet_Click();
    void sckMaster_DataArrival(std::int32_t bytesTotal);
    void tmrMaster_Timer();

  private:
    void Ask();
    void TakeReply(std::string datagram);
    void ParseReply(std::string& datagram);
    bool ReplaceList(std::string& datagram);
    void LogLimit();

    MainFormContext form_;
    ServerListView& servers_;
    ListedAddresses listed_;
    std::size_t waitingBytes_ = 0;
    std::string askedGame_; // whose master was asked last
    std::int32_t serversOfRenewal_ = 0;
    bool replacesList_ = false; // the next reply with an address replaces the list
    bool limitLogged_ = false;  // for this renewal
};

} // namespace quarn
