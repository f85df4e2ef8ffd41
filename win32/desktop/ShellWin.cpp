#include "win32/desktop/ShellWin.h"

#include "base/RunTimeError.h"
#include "win32/Handles.h"

#include <cstring>
#include <shellapi.h>

namespace quarn {

namespace {

const char* OrNone(const std::string& text) noexcept {
    return text.empty() ? nullptr : text.c_str();
}

// Programs that watch the clipboard hold it for a moment after each change, so opening it is retried.
class OpenedClipboard {
  public:
    explicit OpenedClipboard(HWND owner) {
        for (int tries = 1; !OpenClipboard(owner); ++tries) {
            if (tries == MostTries)
                throw RunTimeError(ErrorNumber::CannotOpenClipboard);
            Sleep(10);
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() { CloseClipboard(); }

  private:
    static constexpr int MostTries = 20;
};

GlobalMemory TextInGlobalMemory(const std::string& text) {
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, text.size() + 1));
    void* bytes = memory ? GlobalLock(memory.Get()) : nullptr;
    if (bytes == nullptr)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    std::memcpy(bytes, text.c_str(), text.size() + 1);
    GlobalUnlock(memory.Get());
    return memory;
}

} // namespace

void ShellWin::Open(const Request& request) {
    ShellExecuteA(request.ownedByWindow ? owner_.Main() : nullptr, OrNone(request.verb), request.file.c_str(),
                  OrNone(request.parameters), OrNone(request.folder), static_cast<int>(request.show));
}

void ShellWin::SetClipboardText(const std::string& text) {
    GlobalMemory memory = TextInGlobalMemory(text);
    const OpenedClipboard clipboard(owner_.Main());
    if (!EmptyClipboard() || SetClipboardData(CF_TEXT, memory.Get()) == nullptr)
        throw RunTimeError(ErrorNumber::CannotOpenClipboard);
    memory.Release(); // owned by the clipboard now
}

} // namespace quarn
