#pragma once

// Runs gamenet as a process of its own and asks it over UDP. Every wait is for a condition and has an end.

#include "tools/gamenet/network/Sockets.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace quarn::gamenet {

constexpr std::chrono::seconds Patience{20};

// Readable within this time.
bool IsReadable(const Descriptor& descriptor, std::chrono::milliseconds timeout);

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string File(const std::string& name) const { return path_ / name; }
    std::string Read(const std::string& name) const;

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

    void Terminate() const;
    const Descriptor& Ended() const { return ended_; } // readable when the process has ended
    // Its exit code, nothing where a signal ended it or it did not end in time.
    std::optional<int> ExitCode();

  private:
    pid_t pid_ = -1;
    Descriptor ended_;
};

// Becomes readable when the process has ended.
Descriptor WatchProcess(pid_t pid);

using TruthLine = std::map<std::string, std::string>;

// A network with a seed and master ports of its own, so that tests run side by side.
class RunningNetwork {
  public:
    // Returns when the network is ready; throws std::runtime_error where it does not get so far.
    explicit RunningNetwork(std::vector<std::string> arguments);

    Process& Program() { return process_.value(); }
    const TemporaryFolder& Folder() const { return folder_; }
    std::vector<TruthLine> Truth() const;
    // Values of the game's section in Games.ini, escapes undone.
    TruthLine Game(const std::string& shortName) const;

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

    void Ask(const std::string& request);
    // Nothing where no answer came in time; refused() says whether nobody listens there.
    std::optional<Answer> AwaitAnswer(std::chrono::milliseconds timeout = Patience);
    bool Refused() const { return refused_; }

  private:
    Descriptor socket_;
    Clock::time_point asked_;
    bool refused_ = false;
};

} // namespace quarn::gamenet
