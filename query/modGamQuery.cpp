#include "query/modGamQuery.h"

#include "base/Conversions.h"
#include "support/Trap.h"

namespace quarn {

namespace {

constexpr std::size_t CodeLength = 2;    // "^1", "^N", "^B"
constexpr std::size_t RgbCodeLength = 8; // "^X" and six digits

// Length of the color code at the start of a text that begins with "^", 0 if there is none.
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

void SendServerQuery(clsAppLog& log, const EngineFamily* engine, UdpSocket& sckServer) {
    if (engine == nullptr)
        return;
    Trapped(log, "modGamQuery", "SendServerQuery", OnError::Log, [&] {
        for (const std::string_view request : engine->statusRequests)
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
    Trapped(log, "modGamQuery", "ClearName", OnError::LogUncounted, [&] { name = WithoutCodes(text); });
    return name;
}

} // namespace quarn
