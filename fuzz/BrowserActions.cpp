#include "fuzz/BrowserActions.h"

#include "fuzz/ReadArguments.h"
#include "tests/fakes/UserActions.h"
#include "tools/gamenet/protocol/MasterList.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn::fuzz {

namespace {

using gamenet::Family;

Family FamilyOf(const FuzzedBrowser& b) {
    return b.program.CurrentGame == "d3"   ? Family::Doom3
           : b.program.CurrentGame == "hl" ? Family::HalfLife
                                           : Family::Quake3;
}

// A reply with this body from the current game's master.
std::string MasterReply(const FuzzedBrowser& b, const std::string& body) {
    const Family family = FamilyOf(b);
    return gamenet::MasterHeader(family) + (family == Family::Doom3 ? '\0' : '\\') + body;
}

void PutHonestServer(FuzzedBrowser& b, std::int32_t row) {
    if (row == 0)
        return;
    std::string address = b.Cell(row, AddressColumn);
    const EmulatedServer server = MakeServer(FamilyOf(b), "Live " + address, "map", "osp", row % 3 == 0);
    b.network.servers.insert_or_assign(std::move(address), server);
}

void SlowServer(FuzzedBrowser& b, std::int32_t row, std::int32_t milliseconds) {
    if (row == 0)
        return;
    if (const auto found = b.network.servers.find(b.Cell(row, AddressColumn));
        found != b.network.servers.end())
        found->second.latency = milliseconds;
}

// Also on the port of a query that is finished: a late reply.
void AnswerOnAnyPort(FuzzedBrowser& b, std::int32_t number, const std::string& datagram) {
    const std::vector<FakeUdpSocket*> open = b.sckServer.Open();
    if (!open.empty())
        b.Deliver(*open[static_cast<std::size_t>(number) % open.size()], datagram);
}

void SlowSockets(FuzzedBrowser& b, std::int32_t milliseconds) {
    b.sckServer.closeMilliseconds = b.sckMaster.closeMilliseconds = milliseconds % 50;
    b.sckMaster.lookUpMilliseconds = milliseconds;
}

// The list files and the other files that the program writes.
std::string AnyFile(std::int32_t number) {
    static constexpr const char* Names[] = {"servers-q3.dat",   "servers-d3.dat",   "servers-hl.dat",
                                            "servers-fav1.dat", "servers-fav2.dat", "servers-games.dat",
                                            "countryip.dat",    "Quarn.log",        "Quarn.ini.new"};
    return std::string("C:\\Quarn\\") + Names[static_cast<std::size_t>(number) % std::size(Names)];
}

void FailFile(FuzzedBrowser& b, std::int32_t number, std::int32_t kind) {
    switch (kind % 4) {
    case 0:
        b.fake.files.FailReads(AnyFile(number), ErrorNumber::PermissionDenied);
        break;
    case 1:
        b.fake.files.FailWrites(AnyFile(number), ErrorNumber::PermissionDenied);
        break;
    case 2:
        b.fake.files.freeBytes = static_cast<std::size_t>(number);
        break;
    default:
        b.fake.files.ClearFaults();
        b.fake.files.freeBytes.reset();
        break;
    }
}

// What the network and the system do.
struct OtherAction {
    char letter;
    void (*run)(FuzzedBrowser& browser, const ActionArguments& arguments);
    const char* signature = ""; // as in UserAction
};

using B = FuzzedBrowser;
using A = ActionArguments;

constexpr OtherAction OtherActions[] = {
    {'S', [](B& b, const A& a) { b.Deliver(b.sckServer, a.text); }, "t"},
    {'M', [](B& b, const A& a) { b.Deliver(b.sckMaster, a.text); }, "t"},
    {'H', [](B& b, const A& a) { b.Deliver(b.sckMaster, MasterReply(b, a.text)); }, "t"},
    {'N', [](B& b, const A& a) { b.AnswerNextWith(a.text); }, "t"},
    {'|', [](B& b, const A& a) { b.AnswerNextWith(a.text, a.number * 10); }, "nt"},
    {'>', [](B& b, const A& a) { AnswerOnAnyPort(b, a.number, a.text); }, "nt"},
    {'h', [](B& b, const A& a) { PutHonestServer(b, b.AnyRow(a.number)); }, "n"},
    {'^', [](B& b, const A& a) { SlowServer(b, b.AnyRow(a.number), a.last * 10); }, "nn"},
    {'+', [](B& b, const A& a) { b.program.Simultaneous = a.number; }, "n"},
    {'&', [](B& b, const A& a) { b.sckServer.openLimit = a.number; }, "n"},
    {'t', [](B& b, const A& a) { b.fake.events.RunFor(a.number * 10); }, "n"},
    {'T', [](B& b, const A&) { b.Form().scan.tmrTimeout_Timer(); }},
    {'w', [](B& b, const A& a) { SlowSockets(b, a.number); }, "n"},
    {'v', [](B& b, const A& a) { b.sckMaster.sendFailure = b.sckServer.sendFailure = a.text; }, "t"},
    {'F', [](B& b, const A& a) { FailFile(b, a.number, a.last); }, "nn"},
    {'L', [](B& b, const A& a) { b.PutFile(AnyFile(a.number), a.text); }, "nt"},
    {'W', [](B& b, const A&) { b.fake.clock.SetTickCount(std::numeric_limits<std::int32_t>::max() - 20); }},
    {'V',
     [](B& b, const A&) {
         b.fake.clock.SetNow({2001, 1, 1, 0, 0, 0});
     }},
    {'?', [](B& b, const A&) { b.answer = !b.answer; }},
    {'b', [](B& b, const A& a) { b.openFor = a.number * 10; }, "n"},
    {'U', [](B& b, const A&) { b.Form().Unload(); }},
    {'E', [](B& b, const A&) { b.Form().EndSession(); }},
};

void RunUserAction(FuzzedBrowser& browser, const UserAction& action, ActionArguments arguments) {
    if (!browser.UserCanAct())
        return;
    if (action.replacesRecords)
        browser.NoteStaleRows();
    if (!arguments.text.empty())
        browser.text = arguments.text;
    arguments.accept = browser.answer;
    action.run(browser, arguments);
}

} // namespace

Action ReadAction(FuzzedBrowser& browser, ByteScript& script) {
    const char letter = script.Letter();
    if (const auto user = std::ranges::find(UserActions(), letter, &UserAction::letter);
        user != UserActions().end())
        return [&browser, &action = *user, arguments = ReadArguments(user->signature, script)] {
            RunUserAction(browser, action, arguments);
        };
    const auto other = std::ranges::find(OtherActions, letter, &OtherAction::letter);
    if (other == std::end(OtherActions))
        return {};
    return [&browser, run = other->run, arguments = ReadArguments(other->signature, script)] {
        run(browser, arguments);
    };
}

} // namespace quarn::fuzz
