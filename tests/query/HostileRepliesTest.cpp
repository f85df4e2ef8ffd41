// Whatever bytes come, every parser ends, logs a handful of lines at most, shows nothing, and grows the lists
// by no more than the bytes can hold.

#include "query/modGamQuery.h"
#include "query/modMasterQuery.h"
#include "tests/query/ParserTest.h"

#include <functional>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::IsEmpty;

constexpr std::size_t MaxDatagram = 65'507;
constexpr std::size_t HandfulOfLines = 6;

struct Reply {
    const char* name;
    std::string bytes;
};

std::string Filled(std::string start, std::string_view pattern) {
    while (start.size() + pattern.size() <= MaxDatagram)
        start += pattern;
    return start;
}

// Replies as servers send them; every cut of them is tried.
std::vector<Reply> OrdinaryReplies() {
    return {
        {"Quake 3 status",
         "\xFF\xFF\xFF\xFFstatusResponse\n\\sv_hostname\\^1Srv\\g_needpass\\0\\mapname\\q3dm17"
         "\\sv_maxclients\\16\\.Admin\\\\gamename\\osp\\version\\1.32\n"
         "12 48 \"^1Big\"\n-666 0 \"Bot\"\n"},
        {"Doom 3 info",
         "\xFF\xFFinfoResponse\0\x01\x02\x03\x04\x29\0\x01\0si_name\0Srv\0fs_game\0\0si_map\0m\0"
         "si_maxPlayers\0008\0si_usePass\0000\0si_version\0DOOM\0\0\0"
         "\x01\0\x32\x40\x1F\0\0One\0\x07\0\x33\x40\x1F\0\0Two\0 \xFF\xFF\xFF\xFF"s},
        {"Half-Life info", "\xFF\xFF\xFF\xFF"
                           "C10.0.0.1:27015\0Srv\0de_dust\0cstrike\0CS\0\x03\x10\x2F"s},
        {"Half-Life players", "\xFF\xFF\xFF\xFF"
                              "D\x02\x01One\0\x05\0\0\0\0\0\x80\x3F\x02Two\0\x06\0\0\0\0\0\xC0\x7F"s},
        {"Half-Life rules", "\xFF\xFF\xFF\xFF"
                            "E\x02\0mp_teamplay\0000\0sv_gravity\000800\0"s},
        {"Quake 3 list", "\\\x0A\0\0\x01\x6D\x38\\\xC0\xA8\x01\x02\x6D\x39\\EOT\0\0\0"s},
    };
}

std::vector<Reply> HostileReplies() {
    const std::string q3 = "\xFF\xFF\xFF\xFFstatusResponse\n";
    const std::string d3 = "\xFF\xFFinfoResponse\0\0\0\0\0\x29\0\x01\0"s;
    const std::string hl = "\xFF\xFF\xFF\xFF";
    return {
        {"nothing", ""},
        {"zeros", std::string(MaxDatagram, '\0')},
        {"highest bytes", std::string(MaxDatagram, '\xFF')},
        {"line ends", std::string(MaxDatagram, '\n')},
        {"blanks", std::string(MaxDatagram, ' ')},
        {"backslashes", Filled(q3, "\\")},
        {"backslashes with a line end", Filled(q3, "\\").substr(0, MaxDatagram - 1) + "\n"},
        {"quotes and carets", Filled(q3 + "\\a\\b\n1 2 ", "\"^")},
        {"format characters", q3 + "\\sv_hostname\\%n%s%n%s\\mapname\\%x\n1 2 \"%n%s\"\n"},
        {"key of 1023 bytes", q3 + "\\" + std::string(1023, 'k') + "\\v\n"},
        {"endless info text", Filled(q3, "\\key\\value")},
        {"ten thousand players", q3 + "\\a\\b\n" + Repeated("0 0 \n", 10'000)},
        {"ten thousand scores", Filled(q3 + "\\a\\b\n", "1 ")},
        {"score of a thousand digits", q3 + "\\a\\b\n" + std::string(1000, '9') + " 0 \"n\"\n"},
        {"exponents", q3 + "\\sv_maxclients\\1e999999999999\\g_needpass\\1e-999999999\n1e1 1e1 \"n\"\n"},
        {"ten thousand known keys", Filled(q3, "\\mapname\\m")},
        {"ten thousand empty known keys", Filled(q3, "\\mapname\\\\mapname")},
        {"endless dictionary", Filled(d3, "key\0value\0"s)},
        {"dictionary of empty values", Filled(d3, "k\0\0"s)},
        {"dictionary of empty known values", Filled(d3, "si_map\0\0"s)},
        {"dictionary of marks", Filled(d3, "\0\x01\0"s)},
        {"players without names", Filled(d3 + "\0\0"s, "\x01\0\x01zzzz"s)},
        {"players with empty names", Filled(d3 + "\0\0"s, "\x01\0\x01zzzz\0"s)},
        {"clients of high numbers", Filled(d3 + "\0\0"s, "\xFF\0\x01zzzzn\0"s)},
        {"pings out of range", Filled(d3 + "\0\0"s, "\x01\xFF\xFFzzzzn\0"s)},
        {"count of 255 with one player", hl + "D\xFF\x01n\0\0\0\0\0\0\0\0\0"s},
        {"players of zeros", Filled(hl + "D", "\0"s)},
        {"players of text", Filled(hl + "D", "text"s)},
        {"65535 rules announced and none there", hl + "E\xFF\xFF"},
        {"rules of zeros", Filled(hl + "E", "\0"s)},
        {"info of text", Filled(hl + "C", "text"s)},
        {"info of zeros", Filled(hl + "C", "\0"s)},
        {"split packet", "\xFE\xFF\xFF\xFF\x01\0\0\0\x02\xFF\xFF\xFF\xFF"
                         "Erules"s},
        {"end mark first", "EOT" + std::string(7, '\x01')},
        {"end marks only", Filled("", "EOT")},
        {"end marks inside end marks", Filled("", "EOEOTT")},
        {"bidi and invalid characters",
         q3 + "\\sv_hostname\\\xE2\x80\xAE\xC3\x28\xFE\x01\x7F\n0 0 \"\x1B\"\n"},
    };
}

using Parser = std::function<void(ProgramState&, const std::string&)>;

struct NamedParser {
    const char* name;
    Parser parse;
};

const NamedParser Parsers[] = {
    {"Q3 servers",
     [](ProgramState& program, const std::string& bytes) {
         std::string data = bytes;
         ParseQ3EngineServers(program, data);
     }},
    {"D3 servers",
     [](ProgramState& program, const std::string& bytes) { ParseD3EngineServers(program, bytes); }},
    {"HL servers", [](ProgramState& program, const std::string& bytes) { ParseHLCSServers(program, bytes); }},
    {"Q3 status",
     [](ProgramState& program, const std::string& bytes) { ParseQ3EngineStatus(program, bytes, 1); }},
    {"D3 status",
     [](ProgramState& program, const std::string& bytes) { ParseD3EngineStatus(program, bytes, 1); }},
    {"HL status",
     [](ProgramState& program, const std::string& bytes) { ParseHLCSStatus(program, bytes, 1); }},
};

class HostileReply : public StatusTest {
  protected:
    void ExpectBoundedParse(const NamedParser& parser, const Reply& reply) {
        SCOPED_TRACE(std::string(parser.name) + ", " + reply.name);
        program.AppLog = std::make_unique<clsAppLog>(fake.desktop, program.AppPath);
        fake.files.Put(program.AppLog->DefaultLogFilename(), "");
        program.Servers.Reset(1);
        program.ServerCount = 1;

        parser.parse(program, reply.bytes);
        EXPECT_LE(Logged().size(), HandfulOfLines);
        EXPECT_THAT(fake.prompts.shown, IsEmpty());
        const auto length = static_cast<std::int32_t>(reply.bytes.size());
        EXPECT_LE(program.ServerCount, 1 + length / 6 + 1);
        EXPECT_LE(program.Servers.HighestIndex(), 1 + length / 6 + 1);
        EXPECT_LE(Server().PlayerList.HighestIndex(), length / 4 + 1);
        EXPECT_LE(Server().Variables.size(), 2 * reply.bytes.size());
        EXPECT_GE(Server().PlayerList.HighestIndex(), Server().Players);
    }
};

TEST_F(HostileReply, IsParsedToItsEndByEveryParser) {
    for (const Reply& reply : HostileReplies()) {
        for (const NamedParser& parser : Parsers)
            ExpectBoundedParse(parser, reply);
    }
}

TEST_F(HostileReply, CutAtAnyByteIsParsedToItsEnd) {
    for (const Reply& reply : OrdinaryReplies()) {
        for (std::size_t length = 0; length <= reply.bytes.size(); ++length) {
            for (const NamedParser& parser : Parsers)
                ExpectBoundedParse(parser, {reply.name, reply.bytes.substr(0, length)});
        }
    }
}

TEST_F(HostileReply, WithAnyByteChangedIsParsedToItsEnd) {
    for (const Reply& reply : OrdinaryReplies()) {
        for (std::size_t position = 0; position < reply.bytes.size(); ++position) {
            for (const char byte : {'\0', '\n', ' ', '\\', '\xFF'}) {
                Reply changed = reply;
                changed.bytes[position] = byte;
                for (const NamedParser& parser : Parsers)
                    ExpectBoundedParse(parser, changed);
            }
        }
    }
}

} // namespace
} // namespace quarn
