#include "query/modGetIP.h"

#include "base/Scope.h"
#include "core/modStringHelper.h"
#include "support/Trap.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quarn {

namespace {

constexpr std::size_t AddressParts = 4;
constexpr std::int32_t HighestPart = 255;

// The error message for a malformed dotted address; empty if it is valid.
std::string FaultOfDottedAddress(const LocaleText& locale, const std::string& address) {
    const std::vector<std::string_view> parts = Split(address, '.');
    if (parts.size() != AddressParts)
        return "The IP address entered does not contain 4 sets of numbers!";
    for (std::size_t i = 0; i < AddressParts; ++i) {
        const std::int32_t part = locale.ToLong(std::string(parts[i]));
        if (part < 0 || part > HighestPart)
            return "The " + std::to_string(i + 1) + ". value has to be between 0 and 255!";
    }
    return {};
}

} // namespace

std::string AddrByName(clsAppLog& log, HostNames& hosts, const std::string& host, const WaitFunction& wait) {
    std::optional<std::string> answer;
    Trapped(log, "modGetIP", "AddrByName", OnError::Log, [&] {
        const Finally cancel([&] { hosts.Cancel(); });
        hosts.LookUp(host, [&](const std::string& address) { answer = address; });
        if (!wait([&] { return answer.has_value(); }))
            answer.reset();
    });
    return answer.value_or(std::string());
}

std::string ValidateAddress(ProgramState& program, Desktop& desktop, const std::string& address,
                            const std::string& port, const WaitFunction& wait, AddressField& wrong) {
    clsAppLog& log = *program.AppLog;
    std::string result;
    Trapped(log, "modGetIP", "ValidateAddress", OnError::LogAndShow, [&] {
        wrong = !address.empty() && port.empty() ? AddressField::Port : AddressField::Address;
        if (address.empty() || port.empty())
            return log.ErrorMessage("You have to enter both, an address and a port for the new server!");
        if (!desktop.locale.IsNumeric(port)) {
            wrong = AddressField::Port;
            return log.ErrorMessage("The specified port must be numerical!");
        }
        if (!desktop.locale.IsNumeric(address)) {
            result = AddrByName(log, desktop.hosts, address, wait);
            return;
        }
        const std::string fault = FaultOfDottedAddress(desktop.locale, address);
        if (!fault.empty())
            return log.ErrorMessage(fault);
        result = address;
    });
    return result;
}

} // namespace quarn
