#include "tools/gamenet/protocol/MasterLies.h"

#include "tools/gamenet/protocol/Wire.h"

#include <algorithm>
#include <utility>

namespace quarn::gamenet {
namespace {

constexpr char LoopbackByte = 127;

char DelimiterOf(const MasterList& list) {
    return list.family == Family::Doom3 ? '\0' : '\\';
}

// The distance at which readers expect addresses. Readers of the Half-Life family skip a separator whether or
// not one was sent.
std::size_t StrideOf(const MasterList& list) {
    return list.family == Family::Doom3 ? 6 : 7;
}

std::string WrongHeader(Family family) {
    if (family == Family::Doom3)
        return "\xFF\xFFserverList";
    return family == Family::Quake3 ? "\xFF\xFF\xFF\xFFgetserversExtResponse" : "\xFF\xFF\xFF\xFFg\x0A";
}

std::vector<std::string> Truncated(const MasterList& list, Random& random) {
    std::vector<std::string> datagrams = CutIntoDatagrams(list);
    for (std::string& datagram : datagrams) {
        const std::size_t kept = list.header.size() + 1;
        if (datagram.size() > kept)
            datagram.resize(kept + random.Below(datagram.size() - kept));
    }
    return datagrams;
}

// Half of these begin with the right header, so that readers parse the bytes after it.
std::vector<std::string> RandomList(const MasterList& list, Random& random) {
    constexpr int Longest = 1400;
    const auto drawByte = [&random] {
        const auto byte = static_cast<char>(random.Below(256));
        // No end mark may form: readers remove it, and every address after it would be misaligned.
        return byte == 'E' ? 'e' : byte;
    };
    std::string datagram = list.header;
    if (random.Chance(50))
        for (char& byte : datagram)
            byte = static_cast<char>(random.Between('a', 'z'));
    datagram += DelimiterOf(list);
    const std::size_t body = datagram.size();
    datagram.resize(body + static_cast<std::size_t>(random.Between(0, Longest)));
    std::generate(datagram.begin() + static_cast<std::ptrdiff_t>(body), datagram.end(), drawByte);
    for (std::size_t at = body; at < datagram.size(); at += StrideOf(list))
        datagram[at] = LoopbackByte;
    return {datagram};
}

// The same servers repeated, and half an address at the end.
std::vector<std::string> Oversized(MasterList list) {
    const std::vector<Endpoint> once =
        list.servers.empty() ? std::vector<Endpoint>{{127U << 24 | 1, 9}} : list.servers;
    list.servers.clear();
    const std::size_t count = LargestDatagram / StrideOf(list);
    for (std::size_t nth = 0; nth < count; ++nth)
        list.servers.push_back(once[nth % once.size()]);
    list.entriesPerDatagram = static_cast<int>(count);
    std::string datagram = CutIntoDatagrams(list).front();
    datagram.resize(LargestDatagram, LoopbackByte);
    return {datagram};
}

std::vector<std::string> Duplicated(const MasterList& list) {
    std::vector<std::string> twice;
    for (const std::string& datagram : CutIntoDatagrams(list))
        twice.insert(twice.end(), 2, datagram);
    return twice;
}

} // namespace

std::vector<std::string> LyingList(MasterLie lie, MasterList list, Random random) {
    switch (lie) {
    case MasterLie::None:
        return CutIntoDatagrams(list);
    case MasterLie::Silent:
        return {};
    case MasterLie::Truncated:
        return Truncated(list, random);
    case MasterLie::Random:
        return RandomList(list, random);
    case MasterLie::WrongHeader:
        list.header = WrongHeader(list.family);
        return CutIntoDatagrams(list);
    case MasterLie::Oversized:
        return Oversized(std::move(list));
    case MasterLie::Duplicated:
        return Duplicated(list);
    }
    return {};
}

} // namespace quarn::gamenet
