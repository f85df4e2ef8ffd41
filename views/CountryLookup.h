#pragma once

// The country database as the main window uses it: loaded on first need, with a status text.

#include "views/MainFormContext.h"

namespace quarn {

class CountryLookup {
  public:
    explicit CountryLookup(const MainFormContext& form) : form_(form) {}

    // Loads the database unless it is loaded. A failure is logged; lookups then give "--".
    void EnsureIPDatabase();

    // The same, but a failed load is not tried again until ForgetFailure: a list of thousands of servers
    // asks for each of them, and comes in many datagrams.
    std::string CountryOf(const std::string& address);
    void ForgetFailure() { loadFailed_ = false; }

    // Looks up every listed server again, or tells why it cannot. The cells show it at the next listing.
    void mnuRecheckCountries_Click();

  private:
    void RecheckCountry(const ListRow& row);

    MainFormContext form_;
    bool loadFailed_ = false;
};

} // namespace quarn
