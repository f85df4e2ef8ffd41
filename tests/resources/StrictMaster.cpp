#include "tests/resources/StrictMaster.h"

#include "core/modStringHelper.h"
#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/protocol/Wire.h"

#include <set>

namespace quarn {

namespace {

using gamenet::Family;

bool IsQuake3Request(const StrictMaster& master, std::string_view request) {
    std::vector<std::string_view> expected{"\xFF\xFF\xFF\xFFgetservers"};
    if (!master.name.empty())
        expected.push_back(master.name);
    const std::string protocol = std::to_string(master.protocol);
    expected.push_back(protocol);

    std::vector<std::string_view> words = Split(request, ' ');
    if (words.size() < expected.size() || !std::equal(expected.begin(), expected.end(), words.begin()))
        return false;
    words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(expected.size()));
    // Without both, full and empty servers are left out of the list.
    return words.size() == 2 &&
           std::set(words.begin(), words.end()) == std::set<std::string_view>{"empty", "full"};
}

bool IsDoom3Request(const StrictMaster& master, std::string_view request) {
    for (const std::uint32_t protocol : {master.protocol, 0U}) {
        std::string expected = "\xFF\xFF";
        gamenet::PutText(expected, "getServers");
        gamenet::PutLittle32(expected, protocol);
        gamenet::PutText(expected, "");
        gamenet::PutByte(expected, 0);
        if (request == expected)
            return true;
    }
    return false;
}

} // namespace

bool StrictMaster::Understands(std::string_view request) const {
    return family == Family::Quake3  ? IsQuake3Request(*this, request)
           : family == Family::Doom3 ? IsDoom3Request(*this, request)
                                     : false;
}

std::vector<std::string> StrictMaster::Answer(std::string_view request,
                                              const std::vector<gamenet::Endpoint>& servers) const {
    if (!Understands(request))
        return {};
    gamenet::MasterList list;
    list.family = family;
    list.header = gamenet::MasterHeader(family);
    list.servers = servers;
    return gamenet::CutIntoDatagrams(list);
}

} // namespace quarn
