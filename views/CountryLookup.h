#pragma once

// The country database as the main window uses it: loaded when first needed, with a status text.

#include "views/MainFormContext.h"

namespace quarn {

class CountryLookup {
  public:
    explicit CountryLookup(const MainFormContext& form) : form_(form) {}

    // Loads the database unless it is loaded. A failure is logged; lookups then give "--".
    void EnsureIPDatabase();

    // The same, but a failed load is not tried again until ForgetFailure: the addresses of a long list arrive
    // in many datagrams, and each asks for its country.
    std::string CountryOf(const std::string& address);
    void ForgetFailure() { loadFailed_ = false; }

    // Looks up every listed server again, or shows why that is impossible. The cells are updated at the next
    // listing.
    void mnuRecheckCountries_Click();

  private:
    void RecheckCountry(const ListRow& row);

    MainFormContext form_;
    bool loadFailed_ = false;
};

} // namespace quarn
