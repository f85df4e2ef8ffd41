#include "views/QueryResults.h"

#include "base/Conversions.h"
#include "core/modCommonSubs.h"
#include "support/Trap.h"

namespace quarn {

namespace {

std::size_t DetailBytes(const ServerRecord& server) {
    std::size_t bytes = server.Variables.size();
    for (std::int32_t i = 1; i <= server.PlayerList.HighestIndex(); ++i)
        bytes += sizeof(PlayerRecord) + server.PlayerList[i].Name.size();
    return bytes;
}

} // namespace

void QueryResults::Begin() {
    detailBytes_ = 0;
    for (std::int32_t i = 1; i <= form_.program.Servers.HighestIndex(); ++i)
        detailBytes_ += DetailBytes(form_.program.Servers[i]);
}

QueryTarget QueryResults::TargetOf(std::int32_t row) const {
    const ListRow& listed = form_.controls.lvwServers.Row(row);
    const std::int32_t index = ToLong(listed.main.tag);
    return {.server = form_.program.IdentityOf(index), .shown = listed.subject, .index = index};
}

std::int32_t QueryResults::IndexOf(const QueryTarget& target) const noexcept {
    return form_.program.FindServer(target.server, target.index);
}

std::int32_t QueryResults::RowOf(const QueryTarget& target, std::int32_t likely) const noexcept {
    return form_.controls.lvwServers.RowShowing(target.shown, likely);
}

const EngineFamily* QueryResults::EngineOf(std::int32_t index) const {
    const std::int32_t game = GameIndexOf(form_.program, form_.program.Servers[index]);
    return game == 0 ? nullptr : FindEngine(form_.engines, form_.program.Games[game].Engine);
}

void QueryResults::Take(const ServerReply& reply) {
    const ServerQuery& query = reply.query;
    const std::int32_t index = IndexOf(query.target);
    if (index == 0)
        return;
    if (!query.finished || query.replies == 1)
        form_.program.Servers[index].Ping = TicksBetween(query.sentTick, reply.tick);
    StoreReply(index, reply.datagram);
}

void QueryResults::StoreReply(std::int32_t index, std::string_view datagram) {
    const EngineFamily* const engine = EngineOf(index);
    if (engine == nullptr)
        return;
    const std::size_t before = DetailBytes(form_.program.Servers[index]);
    engine->parseStatus(form_.program, datagram, index);

    ServerRecord& server = form_.program.Servers[index];
    detailBytes_ = detailBytes_ - before + DetailBytes(server);
    if (detailBytes_ <= MostDetailBytes)
        return;
    detailBytes_ -= DetailBytes(server);
    server.PlayerList.Reset();
    server.Variables = {};
    form_.Trapped("sckServer_DataArrival", OnError::LogUncounted,
                  [] { throw RunTimeError(ErrorNumber::OutOfMemory); });
}

void QueryResults::StoreNoAnswer(std::int32_t index) {
    form_.program.Servers[index].Ping = form_.program.PingTimeout;
    form_.program.Servers[index].Players = 0;
}

void QueryResults::Show(const QueryTarget& target) {
    const std::int32_t index = IndexOf(target);
    if (index == 0)
        return;
    if (form_.program.CurrentServer == index) {
        details_.RefreshPlayers();
        details_.RefreshVariables();
    }
    servers_.UpdateRowOf(index, RowOf(target, target.index));
}

} // namespace quarn
