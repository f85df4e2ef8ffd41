#include "core/modCommonSubs.h"

#include "base/Conversions.h"
#include "support/clsAppLog.h"

#include <algorithm>
#include <limits>

namespace quarn {

namespace {

// The list files count from 1900, but the arithmetic uses 1990 as its zero, so that the numbers fit 32 bits.
constexpr std::int64_t SecondsFrom1900To1990 = 2840140800;

DateTime StartOf1990() noexcept {
    return DateTime::From({1990, 1, 1, 0, 0, 0});
}

// Tells the receiving program what the text of a copy-data message is.
constexpr std::uint32_t CopyDataIdentifier = 3;

} // namespace

void LogMissingSeparator(clsAppLog& log) noexcept {
    constexpr ErrorNumber Missing = ErrorNumber::InvalidProcedureCall;
    log.LogUncounted("modCommonSubs", "ExtractString", static_cast<std::int32_t>(Missing),
                     DescriptionOf(Missing));
}

std::string ExtractString(clsAppLog& log, std::string& text, std::string_view separator) {
    const std::size_t end = FindSeparator(text, separator);
    if (end == std::string::npos) {
        LogMissingSeparator(log);
        return {};
    }
    std::string field = text.substr(0, end);
    text.erase(0, end + 1);
    return field;
}

std::string TakeLeft(std::string& text, std::int32_t count) {
    if (count < 0)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    const auto length = static_cast<std::size_t>(count);
    std::string left = text.substr(0, length);
    if (text.size() > length)
        text.erase(0, length);
    return left;
}

std::int32_t GameIndexOfShort(const ProgramState& program, std::string_view gameShort) {
    for (std::int32_t game = 1; game <= program.GameNum; ++game) {
        if (program.Games[game].GameShort == gameShort)
            return game;
    }
    return 0;
}

std::string EngineOfShort(const ProgramState& program, std::string_view gameShort) {
    const std::int32_t game = GameIndexOfShort(program, gameShort);
    return game == 0 ? std::string() : program.Games[game].Engine;
}

std::int32_t GameIndexOf(const ProgramState& program, const ServerRecord& server) {
    return server.Game != 0 ? server.Game : GameIndexOfShort(program, program.CurrentGame);
}

std::string GameShortOf(const ProgramState& program, const ServerRecord& server) {
    const std::int32_t game = GameIndexOf(program, server);
    return program.Games.Holds(game) ? program.Games[game].GameShort : std::string();
}

std::string DateToSeconds(DateTime date) {
    if (date.IsZero())
        return {};
    // A date further away from 1990 could be written, but not read back.
    using Readable = std::numeric_limits<std::int32_t>;
    const std::int64_t since1990 =
        std::clamp<std::int64_t>(date.seconds - StartOf1990().seconds, Readable::min(), Readable::max());
    return std::to_string(since1990 + SecondsFrom1900To1990);
}

DateTime SecondsToDate(double secondsSince1900) {
    const double since1990 = secondsSince1900 - static_cast<double>(SecondsFrom1900To1990);
    return {StartOf1990().seconds + RoundToLong(since1990)};
}

std::int32_t GetFileVersionNumber(const Desktop& desktop, const std::string& path) {
    const FileVersion version = desktop.peers.VersionOf(path);
    return ToLong(std::to_string(version.major) + std::to_string(version.minor) +
                  std::to_string(version.build));
}

void SendCopyData(Desktop& desktop, const std::string& title, const std::string& text) {
    if (title.empty() || text.empty())
        return;
    desktop.peers.SendCopyDataTo(title, CopyDataIdentifier, text + '\0');
}

void PlaceInStatusPanel(ProgressBar& control, StatusBar& statusBar, std::int32_t panel) {
    const StatusPanel& frame = statusBar.panels[panel];
    statusBar.redraw = true;
    control.inFront = true;
    control.flat = true;
    control.bounds = {.left = frame.left + 25,
                      .top = statusBar.top + 45,
                      .width = frame.width - 45,
                      .height = statusBar.height - 75};
}

} // namespace quarn
