#include "support/clsAppLog.h"

#include "base/Succeeds.h"
#include "core/Version.h"
#include "support/MailLink.h"
#include "support/Trap.h"

#include <algorithm>
#include <cstdio>

namespace quarn {

namespace {

constexpr const char* LineEnd = "\r\n";

// A system fact that is not available leaves its item of the report empty.
template<class Getter>
std::string ItemOf(Getter&& getter) noexcept {
    std::string item;
    Succeeds([&] { item = getter(); });
    return item;
}

std::string EntryLine(std::string_view module, std::string_view routine, const LocalTime& now,
                      std::int32_t number, std::string_view description) {
    char milliseconds[16];
    std::snprintf(milliseconds, sizeof milliseconds, ".%03d", now.milliseconds);
    std::string line(module);
    line.append(";").append(routine).append(";").append(LogDateText(now.time)).append(milliseconds);
    line.append(";").append(std::to_string(number)).append(";").append(description);
    return line;
}

std::string MessageOf(std::string_view module, std::string_view routine, std::int32_t number,
                      std::string_view description) {
    std::string text = "A error has occurred in ";
    text.append(module).append(" in ").append(routine).append(LineEnd);
    text.append("Error #").append(std::to_string(number)).append(": ").append(description);
    text.append(LineEnd).append(LineEnd);
    text.append("Please close the program. You will then get the possibility to send an error report to the "
                "developer.");
    text.append(LineEnd);
    text.append("Alternatively, you can also check the file ").append(ApplicationTitle);
    return text.append(".log for details.");
}

std::string FaultText(std::int32_t number, const char* routine) {
    return "Error number " + std::to_string(number) + " in class AppLog, Sub " + routine;
}

std::string VersionNumber(const DllVersion& version) {
    return std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
           std::to_string(version.build);
}

// A size in MiB plus one: partial MiB count and the result is never 0.
std::string Mebibytes(std::uint64_t bytes) {
    return std::to_string(bytes / 1048576 + 1);
}

} // namespace

clsAppLog::clsAppLog(Desktop& desktop, const std::string& applicationFolder)
    : desktop_(desktop), logFilename_(applicationFolder + ApplicationTitle + ".log") {}

// Only an allocation can fail here, and there is nowhere left to report it.
void clsAppLog::Log(std::string_view ModuleName, std::string_view RoutineName, std::int32_t ErrNumber,
                    std::string_view Description, bool DisplayMessage, bool SendEmail,
                    bool OverwriteLog) noexcept {
    Succeeds([&] {
        Enter(ModuleName, RoutineName, ErrNumber, Description, Counted::Yes, OverwriteLog);
        if (DisplayMessage)
            ErrorMessage(MessageOf(ModuleName, RoutineName, ErrNumber, Description));
        if (SendEmail)
            SendReport();
    });
}

void clsAppLog::LogUncounted(std::string_view ModuleName, std::string_view RoutineName,
                             std::int32_t ErrNumber, std::string_view Description) noexcept {
    Succeeds([&] { Enter(ModuleName, RoutineName, ErrNumber, Description, Counted::No, false); });
}

void clsAppLog::Enter(std::string_view module, std::string_view routine, std::int32_t number,
                      std::string_view description, Counted counted, bool overwrite) {
    if (number > 0 && counted == Counted::Yes)
        ++errorCount_;
    std::int32_t& lines =
        linesOfAKind_[std::string(module) + ";" + std::string(routine) + ";" + std::to_string(number)];
    if (lines == MostLinesOfAKind)
        return;
    std::string line = EntryLine(module, routine, desktop_.clock.Now(), number, description);
    if (++lines == MostLinesOfAKind)
        line += " (further entries like this are left out)";
    history_ += line + LineEnd;
    WriteLogEntry(line, overwrite);
}

void clsAppLog::TellWriteFault() noexcept {
    if (writeFault_ != WriteFault::Untold || desktop_.prompts.IsOpen())
        return;
    writeFault_ = WriteFault::Told;
    Succeeds([&] { ErrorMessage(FaultText(writeFaultNumber_, "WriteLogEntry")); });
}

void clsAppLog::ErrorMessage(const std::string& ErrorText) noexcept {
    if (desktop_.prompts.IsOpen())
        return;
    Succeeds([&] { desktop_.prompts.ShowError(ErrorText, std::string(ApplicationTitle) + " - Error"); });
}

void clsAppLog::HandleAppErrors() noexcept {
    if (errorCount_ == 0)
        return;
    bool report = false;
    Succeeds([&] {
        report = desktop_.prompts.AskYesNo(
            std::string(ApplicationTitle) + " generated " + std::to_string(errorCount_) +
                " error(s) during runtime. A log has been created." + LineEnd +
                "Would you like to send an error report to the application developer?",
            "Send error log?");
    });
    if (report)
        Log("clsAppLog", "HandleAppErrors", 0, "Generating error report", false, true, false);
}

void clsAppLog::WriteLogEntry(const std::string& line, bool overwrite) {
    try {
        if (overwrite)
            desktop_.files.Write(logFilename_, line + LineEnd);
        else
            desktop_.files.Append(logFilename_, line + LineEnd);
        writeFault_ = WriteFault::None;
    } catch (...) {
        writeFaultNumber_ = CurrentError().number;
        if (writeFault_ == WriteFault::None)
            writeFault_ = WriteFault::Untold;
    }
}

void clsAppLog::SendReport() {
    const std::string time = LogDateText(desktop_.clock.Now().time);
    std::string body = "User comments: ";
    body.append(LineEnd).append(LineEnd);
    const auto addItem = [&](const char* name, const std::string& value) {
        body.append(name).append(": ").append(value).append(LineEnd);
    };
    addItem("Time", time);
    addItem("OS Version", GetOSVersion());
    addItem("IE Version", GetIEVersion());
    addItem("DirectX Version", GetDirectXVersion());
    addItem("OS Language", GetOSLanguage());
    addItem("Memory", GetMemory());
    body.append(LineEnd).append("Log:").append(LineEnd);

    const std::string subject = std::string("Error log from ") + ApplicationTitle + " " + VersionText;
    const std::size_t taken = MailLink(NotifyEmailAddress, subject, body).size();
    EmailError(NotifyEmailAddress, subject,
               body + NewestLines(history_, LongestMailLink - std::min(taken, LongestMailLink)));
}

void clsAppLog::EmailError(const std::string& recipient, const std::string& subject,
                           const std::string& body) {
    try {
        Shell::Request request;
        request.verb = "Open";
        request.file = MailLink(recipient, subject, body);
        request.ownedByWindow = false;
        desktop_.shell.Open(request);
    } catch (...) {
        ErrorMessage(FaultText(CurrentError().number, "EmailError"));
    }
}

std::string clsAppLog::GetOSVersion() const noexcept {
    return ItemOf([&] {
        const OsVersion version = desktop_.system.WindowsVersion();
        const std::string servicePack = version.servicePack.substr(0, version.servicePack.find('\0'));
        return VersionNumber(version.number) + " " + servicePack;
    });
}

std::string clsAppLog::GetIEVersion() const noexcept {
    return ItemOf([&] { return VersionNumber(desktop_.system.ShellLightWeightVersion()); });
}

std::string clsAppLog::GetDirectXVersion() const noexcept {
    return ItemOf([&] { return desktop_.system.DirectXVersion(); });
}

std::string clsAppLog::GetOSLanguage() const noexcept {
    return ItemOf([&] { return desktop_.system.LanguageName(); });
}

std::string clsAppLog::GetMemory() const noexcept {
    return ItemOf([&] {
        const MemoryStatus memory = desktop_.system.Memory();
        return Mebibytes(memory.availablePhysical) + "/" + Mebibytes(memory.totalPhysical) + " physical, " +
               Mebibytes(memory.availableVirtual) + "/" + Mebibytes(memory.totalVirtual) + " virtual";
    });
}

} // namespace quarn
