#include "views/ServerListFiles.h"

#include "base/Conversions.h"
#include "base/LineReader.h"
#include "base/Succeeds.h"
#include "core/modCommonSubs.h"
#include "core/modStringHelper.h"
#include "support/Trap.h"
#include "views/MainFormContext.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quarn {

namespace {

// Fields of an entry's line, in their order.
enum Field {
    Address,
    Port,
    Country,
    Name,
    Ping,
    Players,
    MaxPlayers,
    ModName,
    Map,
    Locked,
    Password,
    Variables,
    LastVisit,
    FieldCount
};

// A line with fewer fields than these is damaged.
constexpr std::size_t RequiredFields = LastVisit;

// The shortest entry: its separators and a line end.
constexpr std::size_t ShortestLine = RequiredFields;

ServerRecord ParseEntry(std::string_view line) {
    const std::vector<std::string_view> fields = Split(line, ';');
    if (fields.size() < RequiredFields)
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    ServerRecord server;
    server.Address = fields[Address];
    server.Port = ToLong(fields[Port]);
    server.Country = fields[Country];
    server.Name = fields[Name];
    server.Ping = ToLong(fields[Ping]);
    server.Players = ToLong(fields[Players]);
    server.MaxPlayers = ToLong(fields[MaxPlayers]);
    server.ModName = fields[ModName];
    server.Map = fields[Map];
    server.Locked = ToLong(fields[Locked]);
    server.Password = fields[Password];
    server.Variables = fields[Variables];
    // More fields mean a ";" inside a name: then the field of the visit is unknown.
    if (fields.size() == FieldCount && !fields[LastVisit].empty())
        server.LastVisit = SecondsToDate(ToDouble(fields[LastVisit]));
    return server;
}

// A line end inside a text would split the entry.
void AppendOnOneLine(std::string& line, std::string_view text) {
    const std::size_t start = line.size();
    line += text;
    for (std::size_t i = start; i < line.size(); ++i)
        if (line[i] == '\r' || line[i] == '\n')
            line[i] = ' ';
}

void AppendEntry(std::string& content, const ServerRecord& server) {
    const auto text = [&](std::string_view field) {
        AppendOnOneLine(content, field);
        content += ';';
    };
    const auto number = [&](std::int32_t field) {
        content += std::to_string(field);
        content += ';';
    };
    text(server.Address);
    number(server.Port);
    text(server.Country);
    text(server.Name);
    number(server.Ping);
    number(server.Players);
    number(server.MaxPlayers);
    text(server.ModName);
    text(server.Map);
    number(server.Locked);
    content += ';';
    AppendOnOneLine(content, server.Password);
    text(server.Variables);
    content += DateToSeconds(server.LastVisit);
    content += "\r\n";
}

} // namespace

std::string ServerListFiles::PathOf(const std::string& listName) const {
    return program_.AppPath + "servers-" + listName + ".dat";
}

void ServerListFiles::LoadServerList(const std::string& listName) {
    const CommandGate::ListActivity activity(gate_);
    damaged_.erase(listName);
    unreadable_.erase(listName);
    std::optional<std::string> content;
    OneBased<ServerRecord> list;
    if (const auto failure = FailureOf([&] { content = files_.ReadIfThere(PathOf(listName)); })) {
        unreadable_.emplace(listName, failure);
    } else if (content && !Succeeds([&] { list = ReadList(*content); })) {
        list.Reset();
        damaged_.insert(listName);
    }
    ReadGames(listName, list);
    program_.Servers = std::move(list);
}

void ServerListFiles::RequireRead(const std::string& listName) const {
    if (const auto found = unreadable_.find(listName); found != unreadable_.end())
        std::rethrow_exception(found->second);
}

// The list is read into a new one, which replaces the current one when it is complete, so that events that
// run meanwhile find rows and records that match.
OneBased<ServerRecord> ServerListFiles::ReadList(const std::string& content) {
    LineReader lines(content);
    const std::int32_t count = ToLong(lines.ReadLine());
    program_.ServerCount = count;
    if (count > MaxServers)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    if (count < 0 || static_cast<std::size_t>(count) * ShortestLine > lines.Rest().size() + 1)
        throw RunTimeError(ErrorNumber::InputPastEndOfFile);

    OneBased<ServerRecord> list(count);
    for (std::int32_t i = 1; i <= count; ++i) {
        list[i] = ParseEntry(lines.ReadLine());
        gate_.LetEventsRun();
    }
    return list;
}

void ServerListFiles::SaveServerList(const std::string& listName) {
    const CommandGate::ListActivity activity(gate_);
    if (program_.Servers.HighestIndex() == 0)
        RequireRead(listName);
    const std::string content = WriteList();
    const bool keepsExisting = damaged_.contains(listName) || unreadable_.contains(listName);
    if (keepsExisting)
        KeepExisting(listName);
    files_.Replace(PathOf(listName), content);
    if (!keepsExisting)
        ForgetGames(listName);
}

// A list is of use without its games, so no error of their file ends what is done with the list.
void ServerListFiles::ReadGames(const std::string& listName, OneBased<ServerRecord>& list) {
    if (FavoriteGames::IsFavoritesList(listName))
        Succeeds([&] { games_.Read(listName, list); });
}

void ServerListFiles::ForgetGames(const std::string& listName) {
    if (FavoriteGames::IsFavoritesList(listName))
        Trapped(*program_.AppLog, MainFormName, "SaveServerList", OnError::LogUncounted,
                [&] { games_.RemoveOthers(listName, program_.Servers); });
}

void ServerListFiles::SaveBeforeLeaving(const std::string& listName) {
    if (program_.Servers.HighestIndex() == 0)
        Trapped(*program_.AppLog, MainFormName, "SetGameFilter", OnError::Log,
                [&] { SaveServerList(listName); });
    else
        SaveServerList(listName);
}

// No backup is overwritten: a server with a ";" in its name damages its list again and again.
void ServerListFiles::KeepExisting(const std::string& listName) {
    if (const auto content = files_.ReadIfThere(PathOf(listName))) {
        const std::string stem = program_.AppPath + "servers-" + listName;
        std::string backup = stem + ".bak";
        for (std::int32_t number = 2; !files_.WriteNew(backup, *content); ++number)
            backup = stem + "." + std::to_string(number) + ".bak";
    }
    damaged_.erase(listName);
    unreadable_.erase(listName);
}

std::string ServerListFiles::WriteList() {
    const std::int32_t count = program_.Servers.HighestIndex();
    std::string content = " " + std::to_string(count) + "\r\n";
    for (std::int32_t i = 1; i <= count; ++i) {
        AppendEntry(content, program_.Servers[i]);
        gate_.LetEventsRun();
    }
    return content;
}

} // namespace quarn
