#include "views/CountryLookup.h"

#include "base/Conversions.h"
#include "base/Succeeds.h"
#include "query/clsIPLocation.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"

namespace quarn {

void CountryLookup::EnsureIPDatabase() {
    clsIPLocation& database = *form_.program.IPLocation;
    if (database.Initialized())
        return;
    StatusPanel& panel = form_.controls.sbMain.panels[MessagePanel];
    panel.tag = panel.text;
    panel.text = "Initializing IP Database...";
    form_.window.ShowChanges();
    loadFailed_ = !form_.Trapped("EnsureIPDatabase", OnError::Log, [&] { database.InitDatabase(); });
    panel.text = panel.tag;
}

std::string CountryLookup::CountryOf(const std::string& address) {
    if (!loadFailed_)
        EnsureIPDatabase();
    const clsIPLocation& database = *form_.program.IPLocation;
    return database.Initialized() ? database.GetIPCountry(address) : UnknownCountry;
}

void CountryLookup::mnuRecheckCountries_Click() {
    form_.Command(CommandKind::Ordinary, "mnuRecheckCountries_Click", OnError::LogAndShow, [this] {
        EnsureIPDatabase();
        if (!form_.program.IPLocation->Initialized())
            return form_.program.AppLog->ErrorMessage("The countries cannot be looked up, because the file "
                                                      "\"countryip.dat\" in the program's folder "
                                                      "is missing or damaged.");
        const ListView& list = form_.controls.lvwServers;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            RecheckCountry(list.Row(row));
    });
}

// A row whose record no longer exists, or an address from a list file that is not dotted, must not stop the
// look-up of the other rows.
void CountryLookup::RecheckCountry(const ListRow& row) {
    Succeeds([&] {
        ServerRecord& server = form_.program.Servers[ToLong(row.main.tag)];
        server.Country = UnknownCountry;
        server.Country = CountryOf(server.Address);
    });
}

} // namespace quarn
