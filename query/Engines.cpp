#include "query/Engines.h"

#include "query/modGamQuery.h"
#include "query/modMasterQuery.h"

#include <algorithm>

namespace quarn {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view Q3Requests[] = {"\xFF\xFF\xFF\xFFgetstatus"sv};
constexpr std::string_view D3Requests[] = {"\xFF\xFFgetinfo\0\0\0\0"sv};
constexpr std::string_view HLRequests[] = {"\xFF\xFF\xFF\xFFinfo"sv, "\xFF\xFF\xFF\xFFplayers"sv,
                                           "\xFF\xFF\xFF\xFFrules"sv};

constexpr EngineFamily Families[] = {
    {.key = "q3",
     .statusRequests = Q3Requests,
     .parseStatus = ParseQ3EngineStatus,
     .masterHeaderDelimiter = "\\",
     .parseMaster = ParseQ3EngineServers},
    {.key = "d3",
     .statusRequests = D3Requests,
     .parseStatus = ParseD3EngineStatus,
     .masterHeaderDelimiter = "\0"sv,
     .parseMaster = [](ProgramState& program, std::string& body) { ParseD3EngineServers(program, body); }},
    {.key = "hl",
     .statusRequests = HLRequests,
     .parseStatus = ParseHLCSStatus,
     .masterHeaderDelimiter = "\\",
     .parseMaster = [](ProgramState& program, std::string& body) { ParseHLCSServers(program, body); },
     .passesOnMatch = 2,
     .passesOnMismatch = 1},
};

} // namespace

EngineTable StandardEngines() noexcept {
    return Families;
}

const EngineFamily* FindEngine(EngineTable engines, std::string_view key) noexcept {
    const auto found = std::ranges::find(engines, key, &EngineFamily::key);
    return found == engines.end() ? nullptr : &*found;
}

} // namespace quarn
