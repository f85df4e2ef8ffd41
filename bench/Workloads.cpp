#include "bench/Workloads.h"

#include <array>
#include <random>
#include <string_view>

namespace quarn::bench {

namespace {

constexpr std::array<std::string_view, 12> Words = {"Iron",  "Frag",   "Dust",  "Tower", "Night", "Rail",
                                                    "North", "Casual", "Arena", "Old",   "Club",  "Public"};
constexpr std::array<std::string_view, 8> Maps = {"q3dm6",     "q3dm17",    "q3tourney2", "oa_dm1",
                                                  "pro-q3dm6", "aggressor", "cpm3a",      "ctf_gate1"};
constexpr std::array<std::string_view, 5> Mods = {"baseq3", "osp", "cpma", "missionpack", "excessiveplus"};

using Random = std::minstd_rand; // its sequence is fixed by the standard

template<std::size_t N>
std::string_view Pick(Random& random, const std::array<std::string_view, N>& from) {
    return from[random() % N];
}

std::string Name(Random& random) {
    return "^" + std::to_string(random() % 8) + std::string(Pick(random, Words)) + "^7 " +
           std::string(Pick(random, Words)) + " #" + std::to_string(random() % 100);
}

std::string VariableName(std::uint32_t number) {
    return (number % 2 == 0 ? "g_rule" : "sv_setting") + std::to_string(number);
}

} // namespace

std::string Q3Status(std::size_t size) {
    Random random(1);
    std::string text = "\xFF\xFF\xFF\xFFstatusResponse\n\\sv_hostname\\" + Name(random) +
                       "\\mapname\\q3dm17\\gamename\\osp\\sv_maxclients\\32\\g_needpass\\0";
    for (std::uint32_t i = 0; i < 35 && text.size() < size / 2; ++i)
        text += "\\" + VariableName(i) + "\\" + std::to_string(random() % 1000);
    text += "\n";
    while (text.size() < size)
        text += std::to_string(random() % 60) + " " + std::to_string(random() % 200) + " \"" + Name(random) +
                "\"\n";
    return text;
}

std::string D3Status(std::size_t size) {
    using namespace std::string_literals;
    Random random(2);
    std::string text = "\xFF\xFFinfoResponse\0"s + "\x01\x02\x03\x04"s + "\x29\x00\x01\x00"s;
    text += "si_name\0"s + Name(random) + "\0"s + "si_map\0game/mp/d3dm3\0si_maxPlayers\0"s + "16\0"s +
            "si_usepass\0"s + "0\0"s;
    for (std::uint32_t i = 0; i < 35 && text.size() < size / 2; ++i)
        text += VariableName(i) + "\0"s + std::to_string(random() % 1000) + "\0"s;
    text += "\0\0"s;
    char client = 0;
    while (text.size() < size)
        text += std::string(1, client++) + "\x20\x00"s + "\x10\x27\x00\x00"s + Name(random) + "\0"s;
    return text;
}

std::string HLRules(std::size_t size) {
    using namespace std::string_literals;
    Random random(3);
    std::string text = "\xFF\xFF\xFF\xFF"s + "E\x20\x00"s;
    for (std::uint32_t i = 0; text.size() < size; ++i)
        text += VariableName(i) + "\0"s + std::to_string(random() % 1000) + "\0"s;
    return text;
}

std::string MasterBody(std::size_t size) {
    Random random(4);
    std::string body;
    while (body.size() + 7 <= size) {
        for (int i = 0; i < 6; ++i)
            body += static_cast<char>('0' + random() % 200);
        body += '\\';
    }
    return body;
}

OneBased<ServerRecord> Servers(std::int32_t count) {
    Random random(5);
    OneBased<ServerRecord> servers(count);
    for (std::int32_t i = 1; i <= count; ++i) {
        ServerRecord& server = servers[i];
        server.Address = std::to_string(random() % 224 + 1) + "." + std::to_string(random() % 256) + "." +
                         std::to_string(random() % 256) + "." + std::to_string(random() % 256);
        server.Port = 27960 + static_cast<std::int32_t>(random() % 40);
        server.Locked = random() % 8 == 0;
        server.Country = "DE";
        server.Ping = static_cast<std::int32_t>(random() % 400);
        server.MaxPlayers = 32;
        server.Players = static_cast<std::int32_t>(random() % 32);
        server.Name = Name(random);
        server.Map = Pick(random, Maps);
        server.ModName = Pick(random, Mods);
        for (std::uint32_t v = 0; v < 30; ++v)
            server.Variables += "\\" + VariableName(v) + "\\" + std::to_string(random() % 1000);
        if (random() % 10 == 0)
            server.LastVisit = DateTime::From({2026, 3, static_cast<int>(random() % 28) + 1, 20, 15, 0});
    }
    return servers;
}

} // namespace quarn::bench
