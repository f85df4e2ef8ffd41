// Runs gamenet as a process of its own and asks it over UDP. Every wait is for a condition and has an end.
#pragma once

#include "tools/gamenet/Sockets.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace quarn::gamenet {

constexpr std::chrono::seconds patience{20};

// Readable within this time.
bool isReadable(const Descriptor& descriptor, std::chrono::milliseconds timeout);

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const { return path_ / name; }
    std::string read(const std::string& name) const;

  private:
    std::filesystem::path path_;
};

// A child process; killed at the latest by the destructor.
class Process {
  public:
    explicit Process(const std::vector<std::string>& arguments);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void terminate() const;
    const Descriptor& ended() const { return ended_; } // readable when the process has ended
    // Its exit code, nothing where a signal ended it or it did not end in time.
    std::optional<int> exitCode();

  private:
    pid_t pid_ = -1;
    Descriptor ended_;
};

// Becomes readable when the process has ended.
Descriptor watchProcess(pid_t pid);

using TruthLine = std::map<std::string, std::string>;

// A network with a seed and master ports of its own, so that tests run side by side.
class RunningNetwork {
  public:
    // Returns when the network is ready; throws std::runtime_error where it does not get so far.
    explicit RunningNetwork(std::vector<std::string> arguments);

    Process& process() { return process_.value(); }
    const TemporaryFolder& folder() const { return folder_; }
    std::vector<TruthLine> truth() const;
    // Values of the game's section in Games.ini, escapes undone.
    TruthLine game(const std::string& shortName) const;

  private:
    TemporaryFolder folder_;
    std::optional<Process> process_;
};

struct Answer {
    std::string bytes;
    std::chrono::microseconds after{0}; // since the question
};

class Asker {
  public:
    explicit Asker(const Endpoint& server);

    void ask(const std::string& request);
    // Nothing where no answer came in time; refused() says whether nobody listens there.
    std::optional<Answer> answer(std::chrono::milliseconds timeout = patience);
    bool refused() const { return refused_; }

  private:
    Descriptor socket_;
    Clock::time_point asked_;
    bool refused_ = false;
};

} // namespace quarn::gamenet
