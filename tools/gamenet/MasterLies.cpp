#include "tools/gamenet/MasterLies.h"

#include "tools/gamenet/Wire.h"

#include <algorithm>
#include <utility>

namespace quarn::gamenet {
namespace {

constexpr char loopbackByte = 127;

char delimiterOf(const MasterList& list) {
    return list.family == Family::Doom3 ? '\0' : '\\';
}

// How far apart readers take the addresses to be; those of the Half-Life family step over a separator
// whether one is sent or not.
std::size_t strideOf(const MasterList& list) {
    return list.family == Family::Doom3 ? 6 : 7;
}

std::string wrongHeader(Family family) {
    if (family == Family::Doom3)
        return "\xFF\xFFserverList";
    return family == Family::Quake3 ? "\xFF\xFF\xFF\xFFgetserversExtResponse" : "\xFF\xFF\xFF\xFFg\x0A";
}

std::vector<std::string> truncated(const MasterList& list, Random& random) {
    std::vector<std::string> datagrams = cutIntoDatagrams(list);
    for (std::string& datagram : datagrams) {
        const std::size_t kept = list.header.size() + 1;
        if (datagram.size() > kept)
            datagram.resize(kept + random.below(datagram.size() - kept));
    }
    return datagrams;
}

// Half of these carry the right header, so that readers get as far as the bytes behind it.
std::vector<std::string> randomList(const MasterList& list, Random& random) {
    constexpr int longest = 1400;
    const auto drawByte = [&random] {
        const auto byte = static_cast<char>(random.below(256));
        // No end mark may form: readers cut it out, and what follows would slip out of step.
        return byte == 'E' ? 'e' : byte;
    };
    std::string datagram = list.header;
    if (random.chance(50))
        for (char& byte : datagram)
            byte = static_cast<char>(random.between('a', 'z'));
    datagram += delimiterOf(list);
    const std::size_t body = datagram.size();
    datagram.resize(body + static_cast<std::size_t>(random.between(0, longest)));
    std::generate(datagram.begin() + static_cast<std::ptrdiff_t>(body), datagram.end(), drawByte);
    for (std::size_t at = body; at < datagram.size(); at += strideOf(list))
        datagram[at] = loopbackByte;
    return {datagram};
}

// The servers over and over, and half an address at the end.
std::vector<std::string> oversized(MasterList list) {
    const std::vector<Endpoint> once =
        list.servers.empty() ? std::vector<Endpoint>{{127U << 24 | 1, 9}} : list.servers;
    list.servers.clear();
    const std::size_t count = largestDatagram / strideOf(list);
    for (std::size_t nth = 0; nth < count; ++nth)
        list.servers.push_back(once[nth % once.size()]);
    list.entriesPerDatagram = static_cast<int>(count);
    std::string datagram = cutIntoDatagrams(list).front();
    datagram.resize(largestDatagram, loopbackByte);
    return {datagram};
}

std::vector<std::string> duplicated(const MasterList& list) {
    std::vector<std::string> twice;
    for (const std::string& datagram : cutIntoDatagrams(list))
        twice.insert(twice.end(), 2, datagram);
    return twice;
}

} // namespace

std::vector<std::string> lyingList(MasterLie lie, MasterList list, Random random) {
    switch (lie) {
    case MasterLie::None:
        return cutIntoDatagrams(list);
    case MasterLie::Silent:
        return {};
    case MasterLie::Truncated:
        return truncated(list, random);
    case MasterLie::Random:
        return randomList(list, random);
    case MasterLie::WrongHeader:
        list.header = wrongHeader(list.family);
        return cutIntoDatagrams(list);
    case MasterLie::Oversized:
        return oversized(std::move(list));
    case MasterLie::Duplicated:
        return duplicated(list);
    }
    return {};
}

} // namespace quarn::gamenet
