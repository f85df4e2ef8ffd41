#include "tests/tools/gamenet/RunningProgram.h"

#include "tools/gamenet/Text.h"

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

void require(bool condition, const std::string& what) {
    if (!condition)
        throw std::runtime_error(what);
}

pid_t startProgram(const std::vector<std::string>& arguments) {
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
    require(pid > 0, "cannot start a process");
    return pid;
}

} // namespace

bool isReadable(const Descriptor& descriptor, std::chrono::milliseconds timeout) {
    pollfd entry{descriptor.get(), POLLIN, 0};
    return poll(&entry, 1, static_cast<int>(timeout.count())) == 1;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "gamenet-XXXXXX";
    require(mkdtemp(pattern.data()) != nullptr, "cannot create a folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::read(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Descriptor watchProcess(pid_t pid) {
    return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
}

Process::Process(const std::vector<std::string>& arguments)
    : pid_(startProgram(arguments)), ended_(watchProcess(pid_)) {}

Process::~Process() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

void Process::terminate() const {
    kill(pid_, SIGTERM);
}

std::optional<int> Process::exitCode() {
    if (!isReadable(ended_, patience))
        return {};
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

RunningNetwork::RunningNetwork(std::vector<std::string> arguments) {
    const std::string ready = folder_.file("ready");
    const Descriptor changes(inotify_init1(IN_CLOEXEC));
    require(inotify_add_watch(changes.get(), folder_.file("").c_str(), IN_MOVED_TO) >= 0, "cannot watch");
    std::vector<std::string> words = {"--seed", std::to_string(getpid()), "--master-port", "0",  "--duration",
                                      "60",     "--die-with-parent",      "--ready-file",  ready};
    for (const char* option : {"write-truth", "write-games-ini", "country-file", "stats"}) {
        words.push_back("--" + std::string(option));
        words.push_back(folder_.file(option));
    }
    words.insert(words.end(), arguments.begin(), arguments.end());
    process_.emplace(words);
    while (!std::filesystem::exists(ready)) {
        pollfd entries[] = {{changes.get(), POLLIN, 0}, {process_->ended().get(), POLLIN, 0}};
        require(poll(entries, 2, static_cast<int>(std::chrono::milliseconds(patience).count())) > 0,
                "the network does not get ready");
        require(entries[1].revents == 0, "the network has ended");
        char event[4096];
        require(read(changes.get(), event, sizeof event) > 0, "cannot read changes");
    }
}

std::vector<TruthLine> RunningNetwork::truth() const {
    const std::vector<std::string> lines = splitText(folder_.read("write-truth"), '\n');
    const std::vector<std::string> names = splitText(lines.at(0), '\t');
    std::vector<TruthLine> result;
    for (std::size_t at = 1; at + 1 < lines.size(); ++at) {
        const std::vector<std::string> fields = splitText(lines[at], '\t');
        require(fields.size() == names.size(), "a line of another length: " + lines[at]);
        TruthLine& line = result.emplace_back();
        for (std::size_t nth = 0; nth < names.size(); ++nth)
            line[names[nth]] = fields[nth];
    }
    return result;
}

TruthLine RunningNetwork::game(const std::string& shortName) const {
    TruthLine section;
    for (const std::string& line : splitText(folder_.read("write-games-ini"), '\n')) {
        if (line.starts_with('[') && section["GameShort"] != shortName)
            section.clear();
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos && !section.contains(line.substr(0, equals)))
            section[line.substr(0, equals)] = iniUnescaped(line.substr(equals + 1, line.size() - equals - 2));
    }
    return section;
}

Asker::Asker(const Endpoint& server) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(server.address);
    address.sin_port = htons(server.port);
    require(connect(socket_.get(), static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof address) == 0,
            "cannot connect to " + endpointText(server));
}

void Asker::ask(const std::string& request) {
    asked_ = Clock::now();
    require(send(socket_.get(), request.data(), request.size(), 0) >= 0, "cannot send");
}

std::optional<Answer> Asker::answer(std::chrono::milliseconds timeout) {
    if (!isReadable(socket_, timeout))
        return {};
    Answer answer;
    answer.bytes.resize(65536);
    const ssize_t size = recv(socket_.get(), answer.bytes.data(), answer.bytes.size(), 0);
    answer.after = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - asked_);
    refused_ = size < 0 && errno == ECONNREFUSED;
    if (size < 0)
        return {};
    answer.bytes.resize(static_cast<std::size_t>(size));
    return answer;
}

} // namespace quarn::gamenet
