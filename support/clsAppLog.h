#pragma once

// The program's single error and message service. One instance, made first of all and living to the end,
// appends one line for each entry to the log file next to the program, keeps the entries of this run, shows
// messages and prepares error reports. It never throws. A line that cannot be written is kept in memory, and
// the user is told by TellWriteFault, never from inside Log: callers hold references that events could break.
//
// A line reads "Module;Routine;mm/dd/yy hh:nn:ss.mmm;ErrNumber;Description" and ends in CR LF; fields are
// neither quoted nor escaped. Times are local. Of one routine and error number, a run writes at most
// MostLinesOfAKind lines, so that a hostile network fills neither disk nor memory.

#include "desktop/Desktop.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace quarn {

class clsAppLog {
  public:
    // `applicationFolder` ends in a backslash.
    clsAppLog(Desktop& desktop, const std::string& applicationFolder);

    void Log(std::string_view ModuleName, std::string_view RoutineName, std::int32_t ErrNumber = 0,
             std::string_view Description = {}, bool DisplayMessage = false, bool SendEmail = false,
             bool OverwriteLog = false) noexcept;

    // An error caused by datagrams: written like any other, but not counted for HandleAppErrors.
    void LogUncounted(std::string_view ModuleName, std::string_view RoutineName, std::int32_t ErrNumber,
                      std::string_view Description) noexcept;

    // Shows that lines could not be written: once, and again only after a line was written in between. Call
    // it only while no command is running.
    void TellWriteFault() noexcept;

    // A critical message box titled with the program's title and " - Error". While another message box of the
    // log is open, the call returns without showing anything.
    void ErrorMessage(const std::string& ErrorText) noexcept;

    // At the end of the program: offers to send an error report if errors were logged during the run.
    void HandleAppErrors() noexcept;

    std::int32_t ErrorCount() const noexcept { return errorCount_; }
    const std::string& HistoryLog() const noexcept { return history_; }
    const std::string& DefaultLogFilename() const noexcept { return logFilename_; }

    // Recipient of error reports.
    std::string NotifyEmailAddress;

    std::string GetOSVersion() const noexcept;

    static constexpr std::int32_t MostLinesOfAKind = 200;

  private:
    enum class Counted { Yes, No };
    void Enter(std::string_view module, std::string_view routine, std::int32_t number,
               std::string_view description, Counted counted, bool overwrite);
    void EmailError(const std::string& recipient, const std::string& subject, const std::string& body);
    void WriteLogEntry(const std::string& line, bool overwrite);
    void SendReport();
    std::string GetIEVersion() const noexcept;
    std::string GetDirectXVersion() const noexcept;
    std::string GetOSLanguage() const noexcept;
    std::string GetMemory() const noexcept;

    Desktop& desktop_;
    std::string logFilename_;
    std::string history_;
    std::int32_t errorCount_ = 0;
    std::map<std::string, std::int32_t, std::less<>> linesOfAKind_; // by "routine;number"
    enum class WriteFault { None, Untold, Told };
    WriteFault writeFault_ = WriteFault::None;
    std::int32_t writeFaultNumber_ = 0;
};

} // namespace quarn
