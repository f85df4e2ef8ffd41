// The program: parses its arguments, writes the files and runs the network.
#include "tools/gamenet/cli/Options.h"
#include "tools/gamenet/cli/Reports.h"
#include "tools/gamenet/network/Emulation.h"
#include "tools/gamenet/world/Text.h"

#include <csignal>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/prctl.h>
#include <unistd.h>

namespace {

using namespace quarn::gamenet;

constexpr int Failed = 1;
constexpr int BadArguments = 2;

// False if the parent ended before it could be watched.
bool WatchParent() {
    const pid_t parent = getppid();
    return prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == parent;
}

void WriteWanted(const std::string& path, const std::string& content) {
    if (!path.empty())
        WriteWhole(path, content);
}

// A file that always contains the latest count. A count never has fewer digits than the one it overwrites.
class CountFile {
  public:
    explicit CountFile(const std::string& path) : file_(path, std::ios::binary) {
        if (!file_)
            throw std::runtime_error("cannot write " + path);
        Show(0);
    }
    void Show(std::uint64_t count) {
        file_.seekp(0);
        file_ << count;
        file_.flush();
    }

  private:
    std::ofstream file_;
};

int RunNetwork(const Options& options) {
    const World world = CreateWorld(options.network);
    Emulation emulation(options.network, world, !options.record.empty());
    if (options.dieWithParent && !WatchParent())
        return Failed;
    const std::vector<Endpoint> masters = emulation.Masters();
    WriteWanted(options.gamesIni, GamesIni(options.network, masters));
    WriteWanted(options.truth, TruthReport(options.network, world));
    WriteWanted(options.countryFile, CountryReport(world));
    for (std::size_t index = 0; index < masters.size(); ++index)
        std::cout << options.network.games[index].shortName << ": " << options.network.games[index].servers
                  << " servers, master " << EndpointText(masters[index]) << '\n';
    std::cout.flush();
    std::optional<CountFile> asked;
    if (!options.askedFile.empty()) {
        asked.emplace(options.askedFile);
        emulation.ServerAsked = [&, count = std::uint64_t{0}]() mutable { asked->Show(++count); };
    }
    WriteWanted(options.readyFile, std::to_string(getpid()) + '\n');
    emulation.Run(options.duration);
    WriteWanted(options.stats, emulation.Statistics());
    WriteWanted(options.record, emulation.Requests());
    return 0;
}

int RunProgram(const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    if (options.help) {
        std::cout << HelpText();
        return 0;
    }
    // A late timer would falsify every ping.
    prctl(PR_SET_TIMERSLACK, 1);
    return RunNetwork(options);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return RunProgram(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const BadSetting& error) {
        std::cerr << "gamenet: " << error.what() << "\nTry --help.\n";
        return BadArguments;
    } catch (const std::exception& error) {
        std::cerr << "gamenet: " << error.what() << '\n';
        return Failed;
    }
}
