// A list file of any content gives a whole list or an empty one, without a word. What was read is written
// back in a form that no further reading and writing changes. A damaged file is kept under a name that was
// free, and one that cannot be read is not replaced by an empty list.

#include "core/modStringHelper.h"
#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Errors.h"
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

constexpr std::size_t MostBackups = 4;

std::string BackupName(std::size_t number) {
    return "C:\\Quarn\\servers-q3." + (number == 1 ? "" : std::to_string(number) + ".") + "bak";
}

// Backups of earlier runs; the content decides how many.
std::size_t PutBackups(MemoryFiles& files, const std::string& content) {
    const std::size_t count = content.size() % MostBackups;
    for (std::size_t number = 1; number <= count; ++number)
        files.Put(BackupName(number), "backup " + std::to_string(number));
    return count;
}

void RequireBackups(const MemoryFiles& files, std::size_t count, const std::vector<std::string>& added) {
    for (std::size_t number = 1; number <= count; ++number)
        Require(files.Get(BackupName(number)) == "backup " + std::to_string(number),
                "no backup is overwritten");
    for (const std::string& content : added)
        Require(files.Get(BackupName(++count)) == content, "what was replaced is kept as it was");
    Require(!files.Has(BackupName(count + 1)), "only what cannot be read is kept");
}

// The file can be read again when the list is saved.
void RequireUnreadableFileSurvives(FuzzedProgram& fuzzed, ServerListFiles& files, const std::string& path) {
    constexpr ErrorNumber Errors[] = {ErrorNumber::PermissionDenied, ErrorNumber::PathNotFound,
                                      ErrorNumber::PathFileAccessError, ErrorNumber::DiskNotReady};
    MemoryFiles& disk = fuzzed.fake.files;
    const std::string content = disk.Get(path);
    const ErrorNumber error = Errors[content.size() % std::size(Errors)];
    disk.FailReads(path, error, 1);
    files.LoadServerList("q3");
    Require(fuzzed.program.Servers.HighestIndex() == 0, "a file that cannot be read gives an empty list");
    Require(ErrorOf([&] { files.SaveServerList("q3"); }) == error, "the empty list is not saved");
    Require(disk.Get(path) == content, "the file is as it was");
    fuzzed.program.Servers.Reset(1);
    files.SaveServerList("q3");
    Require(disk.Get(path).rfind(" 1\r\n", 0) == 0, "servers replace the file");
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
    const std::size_t backups = PutBackups(fuzzed.fake.files, content);

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
    const bool kept = fuzzed.fake.files.Has(BackupName(backups + 1));
    std::vector<std::string> added(kept ? 1 : 0, content);
    RequireBackups(fuzzed.fake.files, backups, added);
    Require(kept || count > 0 || program.ServerCount == 0, "every damaged file is kept");

    fuzzed.fake.files.Put(path, content);
    RequireUnreadableFileSurvives(fuzzed, files, path);
    added.push_back(content);
    RequireBackups(fuzzed.fake.files, backups, added);
    Require(program.AppLog->HistoryLog().empty() && fuzzed.fake.prompts.shown.empty(), "not a word");
    return 0;
}
