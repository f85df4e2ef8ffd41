#include "query/modGamQuery.h"

#include "core/modCommonSubs.h"
#include "support/Trap.h"

#include <span>

namespace quarn {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view Q3Requests[] = {"\xFF\xFF\xFF\xFFgetstatus"sv};
constexpr std::string_view D3Requests[] = {"\xFF\xFFgetinfo\0\0\0\0"sv};
constexpr std::string_view HLRequests[] = {"\xFF\xFF\xFF\xFFinfo"sv, "\xFF\xFF\xFF\xFFplayers"sv,
                                           "\xFF\xFF\xFF\xFFrules"sv};

std::span<const std::string_view> RequestsOf(std::string_view engine) noexcept {
    if (engine == "q3")
        return Q3Requests;
    if (engine == "d3")
        return D3Requests;
    if (engine == "hl")
        return HLRequests;
    return {};
}

bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

constexpr std::size_t CodeLength = 2;    // "^1", "^N", "^B"
constexpr std::size_t RgbCodeLength = 8; // "^X" and six digits

// Length of the colour code at the front of a text that begins with "^", 0 if that is none.
std::size_t ColourCodeLength(std::string_view text) noexcept {
    if (text.size() < CodeLength)
        return 0;
    switch (text[1]) {
    case 'n':
    case 'N':
    case 'b':
    case 'B':
        return CodeLength;
    case 'x':
    case 'X':
        return RgbCodeLength;
    default:
        return IsDigit(text[1]) ? CodeLength : 0;
    }
}

std::string WithoutCodes(std::string_view text) {
    std::string name(text.size(), '\0'); // no longer than the text
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size();) {
        const char character = text[position];
        const std::size_t code = character == '^' ? ColourCodeLength(text.substr(position)) : 0;
        if (code == 0 && character != '"')
            name[length++] = character;
        position += code == 0 ? 1 : code;
    }
    name.resize(length);
    return name;
}

} // namespace

void SendServerQuery(const ProgramState& program, UdpSocket& sckServer) {
    Trapped(*program.AppLog, "modGamQuery", "SendServerQuery", OnError::Log, [&] {
        for (const std::string_view request : RequestsOf(EngineOfShort(program, program.CurrentGame)))
            sckServer.SendData(request);
    });
}

void ClearServerStatus(ServerRecord& server) {
    server.MaxPlayers = 0;
    server.Name.clear();
    server.Map.clear();
    server.ModName.assign(1, '0');
    server.Players = 0;
    server.PlayerList.Reset();
}

std::string ClearName(clsAppLog& log, std::string_view text) {
    std::string name;
    Trapped(log, "modGamQuery", "ClearName", OnError::Log, [&] { name = WithoutCodes(text); });
    return name;
}

} // namespace quarn
