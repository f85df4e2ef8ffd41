#pragma once

// The local UDP ports of the status queries. Each query opens its own port, and the port stays open after the
// wait for the reply: a late reply still arrives there and is stored in the record that was asked. A finished
// query keeps its port until its time is over; at most `mostFinished` ports of finished queries are kept.
//
// Sockets are created when needed and reused, because creating one is slow.

#include "controls/Timer.h"
#include "controls/UdpSocket.h"
#include "desktop/Clock.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

// The server of a query. Identities are never reused, so they find the record and the row that shows it after
// any sorting, filtering or deleting, or nothing.
struct QueryTarget {
    std::uint32_t server = 0; // identity of the record that is asked
    std::uint32_t shown = 0; // identity of the record whose row is scanned; differs if the row's tag is stale
    std::int32_t index = 0;  // of the record when it was asked; a search begins there
};

struct ServerQuery {
    std::uint32_t number = 0; // never reused; 0: no query
    QueryTarget target;
    std::int32_t sentTick = 0;
    std::int32_t replies = 0; // counted so far
    bool finished = false;    // its outcome is stored; further replies are late
};

struct ServerReply {
    ServerQuery query; // with this reply counted
    std::string datagram;
    std::int32_t tick = 0; // of its arrival
};

class QueryPorts {
  public:
    // For servers that are asked one after the other.
    static constexpr int MostFinishedInTurn = 64;

    // For each of several that are asked at once. A Half-Life server's query is finished by the first of
    // three replies, and up to this many queries follow it while the other two are on their way.
    static constexpr int MostFinishedForEach = 8;

    // A server answers with at most three datagrams. After this many its port is closed, because it floods.
    static constexpr std::int32_t MostReplies = 64;

    // `timer` ticks while a port may have to be closed. All must outlive the ports.
    QueryPorts(UdpSocketFactory& sockets, const Clock& clock, Timer& timer);
    QueryPorts(const QueryPorts&) = delete;
    QueryPorts& operator=(const QueryPorts&) = delete;

    // Must be set. A datagram arrived at the port of a query, at `tick`, and can be taken. Any member may be
    // called from here.
    std::function<void(std::uint32_t number, std::int32_t tick)> DataArrival;

    // Must be set. A port could not be opened or used.
    std::function<void(const std::string& description)> Failed;

    // How many ports of finished queries are kept. The oldest are closed first.
    int mostFinished = MostFinishedInTurn;

    // Milliseconds after which a finished query's port is closed, counted from its request.
    std::int32_t lifetime = 1000;

    // Opens a port for a query to the host. `send` sends the requests. The result is a copy of the query's
    // state; its number is 0 if no port could be opened.
    ServerQuery Ask(const QueryTarget& target, const std::string& host, std::int32_t port,
                    std::int32_t sentTick, const std::function<void(UdpSocket&)>& send);

    // The query's current state; its number is 0 if its port is closed.
    ServerQuery Find(std::uint32_t number) const noexcept;

    // Takes the next datagram that has arrived for the query and counts it. Datagrams shorter than
    // ShortestDatagram are dropped. Nothing if there is no other, if the port is closed, or if its time is
    // over.
    std::optional<ServerReply> Take(std::uint32_t number, std::int32_t tick);

    // Notices what has arrived meanwhile, for the sake of its tick. Nothing runs.
    void NoteArrivals() { sockets_.NoteArrivals(); }

    // Runs DataArrival for everything that has arrived.
    void DeliverArrivals() { sockets_.DeliverArrivals(); }

    // The outcome of the query is stored.
    void Finish(std::uint32_t number);

    void Close(std::uint32_t number);
    void CloseOf(std::uint32_t server); // all ports of one server
    void CloseFinished();
    void CloseAll();

    int OpenCount() const noexcept;

  private:
    struct Port {
        std::unique_ptr<UdpSocket> socket;
        ServerQuery query; // number 0: not open
        bool failed = false;
    };

    Port& FreePort();
    Port* PortOf(std::uint32_t number) const noexcept;
    void CloseOldestFinished();
    void CloseExpired();
    template<class Condition>
    void CloseIf(Condition&& condition);
    void Close(Port& port);

    UdpSocketFactory& sockets_;
    const Clock& clock_;
    Timer& timer_;
    std::vector<std::unique_ptr<Port>> ports_;
    std::uint32_t lastNumber_ = 0;
    int finished_ = 0;
};

} // namespace quarn
