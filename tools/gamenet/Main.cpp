// The program: arguments in, files written, network run.
#include "tools/gamenet/Emulation.h"
#include "tools/gamenet/Options.h"
#include "tools/gamenet/Reports.h"
#include "tools/gamenet/Text.h"

#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <sys/prctl.h>
#include <unistd.h>

namespace {

using namespace quarn::gamenet;

constexpr int failed = 1;
constexpr int badArguments = 2;

// False where the parent has ended before it could be watched.
bool watchParent() {
    const pid_t parent = getppid();
    return prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == parent;
}

void writeWanted(const std::string& path, const std::string& content) {
    if (!path.empty())
        writeWhole(path, content);
}

int runNetwork(const Options& options) {
    const World world = createWorld(options.network);
    Emulation emulation(options.network, world);
    if (options.dieWithParent && !watchParent())
        return failed;
    const std::vector<Endpoint> masters = emulation.masters();
    writeWanted(options.gamesIni, gamesIni(options.network, masters));
    writeWanted(options.truth, truthReport(options.network, world));
    writeWanted(options.countryFile, countryReport(world));
    for (std::size_t index = 0; index < masters.size(); ++index)
        std::cout << options.network.games[index].shortName << ": " << options.network.games[index].servers
                  << " servers, master " << endpointText(masters[index]) << '\n';
    std::cout.flush();
    writeWanted(options.readyFile, std::to_string(getpid()) + '\n');
    emulation.run(options.duration);
    writeWanted(options.stats, emulation.statistics());
    return 0;
}

int runProgram(const std::vector<std::string>& arguments) {
    const Options options = parseOptions(arguments);
    if (options.help) {
        std::cout << helpText();
        return 0;
    }
    // A timer that fires late would falsify every ping.
    prctl(PR_SET_TIMERSLACK, 1);
    return runNetwork(options);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return runProgram(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const BadSetting& error) {
        std::cerr << "gamenet: " << error.what() << "\nTry --help.\n";
        return badArguments;
    } catch (const std::exception& error) {
        std::cerr << "gamenet: " << error.what() << '\n';
        return failed;
    }
}
