#include "win32/desktop/PromptsWin.h"

#include "base/RunTimeError.h"
#include "base/Scope.h"
#include "win32/Libraries.h"
#include "win32/SystemError.h"
#include "win32/dialogs/InputBox.h"

#include <algorithm>
#include <commctrl.h>
#include <commdlg.h>
#include <initializer_list>
#include <memory>
#include <shlobj.h>
#include <string_view>
#include <utility>

namespace quarn {

namespace {

// Four times what most of the system supports: no path that can be chosen is cut.
constexpr DWORD PathBytes = 1024;

// "Text|*.txt|All|*.*" in the form of the save dialog: each part is followed by a NUL, the whole by another
// one.
std::string FilterParts(std::string filter) {
    std::replace(filter.begin(), filter.end(), '|', '\0');
    filter.push_back('\0');
    return filter;
}

// The extension for a name typed without one: that of the filter's first pattern, if it is a plain one.
std::string DefaultExtension(const std::string& filter) {
    const std::size_t pattern = filter.find("|*.");
    if (pattern == std::string::npos)
        return {};
    const std::size_t first = pattern + 3;
    const std::string extension = filter.substr(first, filter.find_first_of("|;", first) - first);
    return extension.find_first_of("*?") == std::string::npos ? extension : std::string();
}

// The dialog selects nothing for a folder whose path ends in a backslash, except the root of a drive.
std::string WithoutTrailingBackslash(const std::string& folder) {
    const bool isRoot = folder.size() <= 3 && folder.find(':') != std::string::npos;
    return folder.ends_with('\\') && !isRoot ? folder.substr(0, folder.size() - 1) : folder;
}

int CALLBACK PreselectFolder(HWND dialog, UINT event, LPARAM, LPARAM path) noexcept {
    if (event == BFFM_INITIALIZED)
        SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, path);
    return 0;
}

struct DialogSearch {
    HWND main;
    bool mainIsShown;
    HWND found = nullptr;
};

BOOL CALLBACK LookAt(HWND window, LPARAM parameter) noexcept {
    auto& search = *reinterpret_cast<DialogSearch*>(parameter);
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    const bool isDialog = std::string_view(name) == "#32770" && window != search.main;
    if (!isDialog || !IsWindowEnabled(window) || (search.mainIsShown && !IsWindowVisible(window)))
        return TRUE;
    search.found = window;
    return FALSE;
}

// The dialog or message box of this thread that takes input now: those below it are disabled. The system
// hides the dialogs of a minimized window.
HWND UppermostDialog(HWND main) noexcept {
    DialogSearch search{main, main != nullptr && IsWindowVisible(main) && !IsIconic(main)};
    EnumThreadWindows(GetCurrentThreadId(), &LookAt, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// How often a dialog is asked to close before it is ended without its own clean-up.
constexpr int AttemptsBeforeEnd = 20;

// As the user would. A question without a Cancel button is answered with No, a message with OK; questions
// that newer systems draw themselves have a message of their own.
bool PressCancel(HWND dialog) noexcept {
    for (const int button : {IDCANCEL, IDNO, IDOK})
        if (const HWND control = GetDlgItem(dialog, button); control != nullptr)
            return PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                                reinterpret_cast<LPARAM>(control)) != FALSE;
    if (FindWindowExA(dialog, nullptr, "DirectUIHWND", nullptr) == nullptr)
        return false;
    PostMessageA(dialog, TDM_CLICK_BUTTON, IDCANCEL, 0);
    return PostMessageA(dialog, TDM_CLICK_BUTTON, IDNO, 0) != FALSE;
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

bool PromptsWin::RunYesNoBox(const std::string& text, const std::string& title, DefaultButton defaultButton) {
    const UINT second = defaultButton == DefaultButton::No ? MB_DEFBUTTON2 : 0;
    return MessageBoxOf(text, title, MB_YESNO | MB_ICONQUESTION | second) == IDYES;
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
    // Loaded when first needed: it would take a twentieth of the start.
    const auto ask = SystemFunction<decltype(GetSaveFileNameA)>("comdlg32.dll", "GetSaveFileNameA");
    const auto lastError =
        SystemFunction<decltype(CommDlgExtendedError)>("comdlg32.dll", "CommDlgExtendedError");
    if (ask == nullptr || lastError == nullptr)
        ThrowLastError();
    const Restore open(systemDialogs_, systemDialogs_ + 1);
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
    const std::string folder = WithoutTrailingBackslash(preselected);
    dialog.lParam = reinterpret_cast<LPARAM>(folder.c_str());
    const Restore open(systemDialogs_, systemDialogs_ + 1);
    const std::unique_ptr<ITEMIDLIST, TaskMemoryDeleter> chosen(SHBrowseForFolderA(&dialog));
    char path[PathBytes] = "";
    if (!chosen || !SHGetPathFromIDListA(chosen.get(), path))
        return {};
    return path;
}

bool PromptsWin::CancelOpenBox() noexcept {
    const HWND dialog = UppermostDialog(owner_.Main());
    attempts_ = dialog == std::exchange(cancelled_, dialog) ? attempts_ + 1 : 0;
    if (dialog == nullptr)
        return false;
    if (attempts_ == AttemptsBeforeEnd)
        EndDialog(dialog, IDCANCEL);
    else if (!PressCancel(dialog))
        PostMessageA(dialog, WM_CLOSE, 0, 0);
    return true;
}

} // namespace quarn
