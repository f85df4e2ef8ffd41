// A list file of any content gives a complete list or an empty one, without a log entry or message. What was
// read is written back in a form that further reading and writing does not change.

#include "core/modStringHelper.h"
#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "views/ServerListFiles.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::fuzz {

namespace {

constexpr std::size_t ShortestEntry = 16; // eleven separators and five digits

// The lines of a file, found in another way than the reader's.
std::vector<std::string> Lines(std::string content) {
    ReplaceAll(content, "\r\n", "\n");
    ReplaceAll(content, "\r", "\n");
    std::vector<std::string> lines;
    for (const std::string_view line : Split(content, '\n'))
        lines.emplace_back(line);
    return lines;
}

void RequireTheLines(const ProgramState& program, const std::vector<std::string>& lines) {
    const std::int32_t count = program.Servers.HighestIndex();
    Require(count == 0 || static_cast<std::size_t>(count) < lines.size(), "a line for each entry");
    for (std::int32_t i = 1; i <= count; ++i) {
        const ServerRecord& server = program.Servers[i];
        const std::string& line = lines[static_cast<std::size_t>(i)];
        Require(line.compare(0, server.Address.size() + 1, server.Address + ";") == 0, "the line's address");
        Require(line.find(";" + server.Country + ";" + server.Name + ";") != std::string::npos,
                "the line's country and name");
        Require(line.find(";" + server.ModName + ";" + server.Map + ";") != std::string::npos,
                "the line's MOD and map");
        Require(server.PlayerList.HighestIndex() == 0, "no players");
    }
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    const std::string content(reinterpret_cast<const char*>(data), size);
    FuzzedProgram fuzzed;
    ProgramState& program = fuzzed.program;
    CommandGate gate(fuzzed.fake.events);
    ServerListFiles files(program, fuzzed.fake.files, gate);
    const std::string path = files.PathOf("q3");
    fuzzed.fake.files.Put(path, content);

    files.LoadServerList("q3");
    const std::int32_t count = program.Servers.HighestIndex();
    Require(static_cast<std::size_t>(count) <= size / ShortestEntry, "no more entries than the file holds");
    RequireTheLines(program, Lines(content));
    if (count > 0)
        Require(program.ServerCount == count, "the count of a whole list");

    files.SaveServerList("q3");
    const std::string written = fuzzed.fake.files.Get(path);
    files.LoadServerList("q3");
    Require(program.Servers.HighestIndex() == count, "what was written can be read");
    files.SaveServerList("q3");
    Require(fuzzed.fake.files.Get(path) == written, "reading and writing again changes nothing");
    const bool kept = fuzzed.fake.files.Has("C:\\Quarn\\servers-q3.bak");
    Require(!kept || fuzzed.fake.files.Get("C:\\Quarn\\servers-q3.bak") == content,
            "a damaged file is kept as it was");
    Require(kept || count > 0 || program.ServerCount == 0, "every damaged file is kept");
    Require(program.AppLog->HistoryLog().empty() && fuzzed.fake.prompts.shown.empty(), "not a word");
    return 0;
}
