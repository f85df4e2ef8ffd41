#include "query/modMasterQuery.h"

#include "base/Conversions.h"
#include "core/modStringHelper.h"
#include "support/Trap.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace quarn {

namespace {

constexpr std::size_t AddressLength = 4;

enum class PortOrder { HighByteFirst, LowByteFirst };

struct Layout {
    std::int32_t divisor; // bytes of a record, for the list's size
    std::int32_t step;    // bytes of a record, for reading the body
    PortOrder portOrder;
};

constexpr Layout Q3Layout{7, 7, PortOrder::HighByteFirst};
constexpr Layout D3Layout{6, 6, PortOrder::LowByteFirst};
constexpr Layout HLLayout{6, 7, PortOrder::HighByteFirst};

std::int32_t ByteAt(std::string_view text, std::size_t position) {
    if (position >= text.size())
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return static_cast<unsigned char>(text[position]);
}

// Error 5 unless all four bytes are present.
std::string DottedAddress(std::string_view bytes) {
    char text[sizeof "255.255.255.255"];
    char* end = text;
    for (std::size_t position = 0; position < AddressLength; ++position) {
        if (position > 0)
            *end++ = '.';
        end = std::to_chars(end, end + 3, ByteAt(bytes, position)).ptr; // a byte has three digits at most
    }
    return std::string(text, end);
}

std::int32_t Port(std::string_view bytes, PortOrder order) {
    const std::int32_t first = ByteAt(bytes, 0);
    const std::int32_t second = ByteAt(bytes, 1);
    return order == PortOrder::HighByteFirst ? first * 256 + second : first + second * 256;
}

// A truncated last record is still counted. Reading it fails with error 5 at the first missing byte, or with
// error 9 if the rounded count left no slot for it.
void AppendServers(ProgramState& program, std::string_view body, const Layout& layout) {
    program.PreviousServerCount = program.ServerCount;
    const std::int32_t length = static_cast<std::int32_t>(body.size());
    const std::int32_t highestIndex = program.ServerCount + DivideRounded(length, layout.divisor);
    if (highestIndex > MaxServers)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    program.Servers.Resize(highestIndex);

    while (!body.empty()) {
        ServerRecord& server = program.Servers[++program.ServerCount];
        server.PlayerList.Reset();
        server.Address = DottedAddress(body);
        server.Port = Port(body.substr(AddressLength), layout.portOrder);
        body.remove_prefix(std::min<std::size_t>(layout.step, body.size()));
    }
}

} // namespace

void ParseQ3EngineServers(ProgramState& program, std::string& data) {
    Trapped(*program.AppLog, "modMasterQuery", "ParseQ3EngineServers", OnError::LogUncounted, [&] {
        ReplaceAll(data, "EOT", "");
        ReplaceAll(data, "EOF", "");
        AppendServers(program, data, Q3Layout);
    });
}

void ParseD3EngineServers(ProgramState& program, std::string_view data) {
    Trapped(*program.AppLog, "modMasterQuery", "ParseD3EngineServers", OnError::LogUncounted,
            [&] { AppendServers(program, data, D3Layout); });
}

void ParseHLCSServers(ProgramState& program, std::string_view data) {
    Trapped(*program.AppLog, "modMasterQuery", "ParseHLCSServers", OnError::LogUncounted,
            [&] { AppendServers(program, data, HLLayout); });
}

} // namespace quarn
