// A variables text of any content becomes a row for each pair, at most one log entry, and nothing shown.

#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeFormWindow.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/FakeUdpSockets.h"
#include "tests/fakes/LoggedEntries.h"
#include "views/ServerDetails.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quarn::fuzz {

namespace {

// The cells of all rows, joined as the text was.
std::string Joined(ListView& list) {
    std::string text;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        text += '\\' + list.Cell(row, 1).text + '\\' + list.Cell(row, 2).text;
    return text;
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    const std::string text(reinterpret_cast<const char*>(data), size);
    FuzzedProgram fuzzed;
    FakeFormWindow window;
    FakeUdpSocket master(fuzzed.fake.clock, fuzzed.fake.events, fuzzed.fake.hosts);
    FakeUdpSockets servers(fuzzed.fake.clock, fuzzed.fake.events, fuzzed.fake.hosts);
    MainControls controls(master, servers, fuzzed.fake.clock);
    CommandGate gate(fuzzed.fake.desktop.events);
    ServerDetails details({fuzzed.program, fuzzed.fake.desktop, window, controls, gate});
    fuzzed.program.CurrentServer = 1;
    fuzzed.program.Servers[1].Variables = text;

    details.RefreshVariables();
    const auto backslashes = std::count(text.begin(), text.end(), '\\');
    Require(controls.lvwServVars.RowCount() == (backslashes + 1) / 2, "a row for each pair");
    const bool lastIsHalf = backslashes % 2 != 0;
    Require(LoggedEntries(fuzzed.program.AppLog->HistoryLog()).size() == (lastIsHalf ? 1U : 0U),
            "half a pair is logged, nothing else");
    Require(fuzzed.program.AppLog->ErrorCount() == 0, "what a datagram causes is not counted");
    Require(fuzzed.fake.prompts.shown.empty(), "nothing is shown");

    const std::size_t first = text.find('\\');
    const std::string pairs = first == std::string::npos ? std::string() : text.substr(first);
    Require(Joined(controls.lvwServVars) == pairs + (lastIsHalf ? "\\" : ""), "the rows hold the whole text");
    return 0;
}
