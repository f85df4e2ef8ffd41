#include "win32/desktop/PromptsWin.h"

#include "base/RunTimeError.h"
#include "win32/Libraries.h"
#include "win32/SystemError.h"
#include "win32/dialogs/InputBox.h"

#include <algorithm>
#include <commdlg.h>
#include <memory>
#include <shlobj.h>

namespace quarn {

namespace {

// Four times what most of the system knows: no path that can be chosen is cut.
constexpr DWORD PathBytes = 1024;

// "Text|*.txt|All|*.*" as the save dialog wants it: each part ended by a NUL, the whole by another one.
std::string FilterParts(std::string filter) {
    std::replace(filter.begin(), filter.end(), '|', '\0');
    filter.push_back('\0');
    return filter;
}

// The extension that a name typed without one gets: that of the filter's first pattern, if it is a plain one.
std::string DefaultExtension(const std::string& filter) {
    const std::size_t pattern = filter.find("|*.");
    if (pattern == std::string::npos)
        return {};
    const std::size_t first = pattern + 3;
    const std::string extension = filter.substr(first, filter.find_first_of("|;", first) - first);
    return extension.find_first_of("*?") == std::string::npos ? extension : std::string();
}

int CALLBACK PreselectFolder(HWND dialog, UINT event, LPARAM, LPARAM path) noexcept {
    if (event == BFFM_INITIALIZED)
        SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, path);
    return 0;
}

struct TaskMemoryDeleter {
    void operator()(void* memory) const noexcept { CoTaskMemFree(memory); }
};

} // namespace

int PromptsWin::MessageBoxOf(const std::string& text, const std::string& title, UINT style) {
    return MessageBoxA(owner_.ForBox(), text.c_str(), title.c_str(), style);
}

void PromptsWin::RunErrorBox(const std::string& text, const std::string& title) {
    MessageBoxOf(text, title, MB_OK | MB_ICONERROR);
}

bool PromptsWin::RunYesNoBox(const std::string& text, const std::string& title) {
    return MessageBoxOf(text, title, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

std::string PromptsWin::RunTextBox(const std::string& prompt, const std::string& title) {
    return AskInInputBox(owner_.ForBox(), owner_.IsTopMost(), prompt, title);
}

std::string PromptsWin::RunSaveFileBox(const std::string& title, const std::string& filter) {
    const std::string parts = FilterParts(filter);
    const std::string extension = DefaultExtension(filter);
    char path[PathBytes] = "";
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner_.ForBox();
    dialog.lpstrFilter = parts.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path;
    dialog.nMaxFile = sizeof path;
    dialog.lpstrTitle = title.c_str();
    dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    dialog.Flags =
        OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    // Loaded when it is first needed: it would take a twentieth of the start.
    const auto ask = SystemFunction<decltype(GetSaveFileNameA)>("comdlg32.dll", "GetSaveFileNameA");
    const auto lastError =
        SystemFunction<decltype(CommDlgExtendedError)>("comdlg32.dll", "CommDlgExtendedError");
    if (ask == nullptr || lastError == nullptr)
        ThrowLastError();
    if (ask(&dialog))
        return path;
    if (lastError() != 0)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return {};
}

std::string PromptsWin::RunFolderBox(const std::string& title, const std::string& preselected) {
    char name[PathBytes] = "";
    BROWSEINFOA dialog{};
    dialog.hwndOwner = owner_.ForBox();
    dialog.pszDisplayName = name;
    dialog.lpszTitle = title.c_str();
    dialog.lpfn = &PreselectFolder;
    dialog.lParam = reinterpret_cast<LPARAM>(preselected.c_str());
    const std::unique_ptr<ITEMIDLIST, TaskMemoryDeleter> chosen(SHBrowseForFolderA(&dialog));
    char path[PathBytes] = "";
    if (!chosen || !SHGetPathFromIDListA(chosen.get(), path))
        return {};
    return path;
}

bool PromptsWin::CancelOpenBox() noexcept {
    const HWND box = owner_.ForBox();
    if (box == nullptr || box == owner_.Main() || !IsWindowVisible(box))
        return false;
    // The system's dialogs clean up on their Cancel button; a box without one has only its end.
    if (GetDlgItem(box, IDCANCEL) != nullptr)
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, IDCANCEL)));
    else
        EndDialog(box, IDCANCEL);
    return true;
}

} // namespace quarn
