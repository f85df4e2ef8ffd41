#include "tests/tools/gamenet/RunningProgram.h"

#include "tools/gamenet/world/Text.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quarn::gamenet {
namespace {

void Require(bool condition, const std::string& what) {
    if (!condition)
        throw std::runtime_error(what);
}

pid_t StartProgram(const std::vector<std::string>& arguments) {
    std::vector<std::string> words{GAMENET_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        execv(GAMENET_PROGRAM, pointers.data());
        _exit(127);
    }
    Require(pid > 0, "cannot start a process");
    return pid;
}

} // namespace

bool IsReadable(const Descriptor& descriptor, std::chrono::milliseconds timeout) {
    pollfd entry{descriptor.Get(), POLLIN, 0};
    return poll(&entry, 1, static_cast<int>(timeout.count())) == 1;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "gamenet-XXXXXX";
    Require(mkdtemp(pattern.data()) != nullptr, "cannot create a folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::Read(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Descriptor WatchProcess(pid_t pid) {
    return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
}

Process::Process(const std::vector<std::string>& arguments)
    : pid_(StartProgram(arguments)), ended_(WatchProcess(pid_)) {}

Process::~Process() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

void Process::Terminate() const {
    kill(pid_, SIGTERM);
}

std::optional<int> Process::ExitCode() {
    if (!IsReadable(ended_, Patience))
        return {};
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

RunningNetwork::RunningNetwork(std::vector<std::string> arguments) {
    const std::string ready = folder_.File("ready");
    const Descriptor changes(inotify_init1(IN_CLOEXEC));
    Require(inotify_add_watch(changes.Get(), folder_.File("").c_str(), IN_MOVED_TO) >= 0, "cannot watch");
    std::vector<std::string> words = {"--seed", std::to_string(getpid()), "--master-port", "0",  "--duration",
                                      "60",     "--die-with-parent",      "--ready-file",  ready};
    for (const char* option : {"write-truth", "write-games-ini", "country-file", "stats"}) {
        words.push_back("--" + std::string(option));
        words.push_back(folder_.File(option));
    }
    words.insert(words.end(), arguments.begin(), arguments.end());
    process_.emplace(words);
    while (!std::filesystem::exists(ready)) {
        pollfd entries[] = {{changes.Get(), POLLIN, 0}, {process_->Ended().Get(), POLLIN, 0}};
        Require(poll(entries, 2, static_cast<int>(std::chrono::milliseconds(Patience).count())) > 0,
                "the network does not get ready");
        Require(entries[1].revents == 0, "the network has ended");
        char event[4096];
        Require(read(changes.Get(), event, sizeof event) > 0, "cannot read changes");
    }
}

std::vector<TruthLine> RunningNetwork::Truth() const {
    const std::vector<std::string> lines = SplitText(folder_.Read("write-truth"), '\n');
    const std::vector<std::string> names = SplitText(lines.at(0), '\t');
    std::vector<TruthLine> result;
    for (std::size_t at = 1; at + 1 < lines.size(); ++at) {
        const std::vector<std::string> fields = SplitText(lines[at], '\t');
        Require(fields.size() == names.size(), "a line of another length: " + lines[at]);
        TruthLine& line = result.emplace_back();
        for (std::size_t nth = 0; nth < names.size(); ++nth)
            line[names[nth]] = fields[nth];
    }
    return result;
}

TruthLine RunningNetwork::Game(const std::string& shortName) const {
    TruthLine section;
    for (const std::string& line : SplitText(folder_.Read("write-games-ini"), '\n')) {
        if (line.starts_with('[') && section["GameShort"] != shortName)
            section.clear();
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos && !section.contains(line.substr(0, equals)))
            section[line.substr(0, equals)] = IniUnescaped(line.substr(equals + 1, line.size() - equals - 2));
    }
    return section;
}

Asker::Asker(const Endpoint& server) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(server.address);
    address.sin_port = htons(server.port);
    Require(connect(socket_.Get(), static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof address) == 0,
            "cannot connect to " + EndpointText(server));
}

void Asker::Ask(const std::string& request) {
    asked_ = Clock::now();
    Require(send(socket_.Get(), request.data(), request.size(), 0) >= 0, "cannot send");
}

std::optional<Answer> Asker::AwaitAnswer(std::chrono::milliseconds timeout) {
    if (!IsReadable(socket_, timeout))
        return {};
    Answer answer;
    answer.bytes.resize(65536);
    const ssize_t size = recv(socket_.Get(), answer.bytes.data(), answer.bytes.size(), 0);
    answer.after = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - asked_);
    refused_ = size < 0 && errno == ECONNREFUSED;
    if (size < 0)
        return {};
    answer.bytes.resize(static_cast<std::size_t>(size));
    return answer;
}

} // namespace quarn::gamenet
