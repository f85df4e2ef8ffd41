#include "win32/desktop/FilesWin.h"

#include "win32/AnsiText.h"
#include "win32/Handles.h"
#include "win32/SystemError.h"
#include "win32/desktop/Patience.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// One call reads or writes at most this much, because its count has 32 bits.
constexpr std::size_t BlockSize = 1 << 16;

// Number of temporary names to try before giving up.
constexpr int TemporaryNames = 100;

// No handle if the file cannot be opened; GetLastError tells why.
FileHandle TryOpen(Patience& patience, const std::string& path, DWORD access, DWORD share,
                   DWORD disposition) {
    for (;;) {
        FileHandle file(
            CreateFileA(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file || !patience.TryAgain(path))
            return file;
    }
}

FileHandle Open(Patience& patience, const std::string& path, DWORD access, DWORD share, DWORD disposition) {
    FileHandle file = TryOpen(patience, path, access, share, disposition);
    if (!file)
        ThrowLastError();
    return file;
}

void WriteAll(Patience& patience, const FileHandle& file, const std::string& path, std::string_view content) {
    while (!content.empty()) {
        const auto block = static_cast<DWORD>(std::min(content.size(), BlockSize));
        DWORD written = 0;
        if (WriteFile(file.Get(), content.data(), block, &written, nullptr))
            content.remove_prefix(written);
        else if (!patience.TryAgain(path))
            ThrowLastError();
    }
}

void Flush(const FileHandle& file) {
    if (!FlushFileBuffers(file.Get()))
        ThrowLastError();
}

bool HasAttribute(const std::string& path, DWORD attribute) noexcept {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

// A temporary file next to another file, deleted on destruction unless Keep was called. A stale file of its
// name is overwritten; one that is in use is skipped.
class TemporaryFile {
  public:
    TemporaryFile(Patience& patience, const std::string& other) {
        for (int i = 0; i < TemporaryNames; ++i) {
            path_ = other + "." + std::to_string(i) + ".tmp";
            if (Create(patience))
                return;
        }
        throw RunTimeError(ErrorNumber::PathFileAccessError);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        file_.Reset();
        if (!kept_)
            DeleteFileA(path_.c_str());
    }

    void Fill(Patience& patience, std::string_view content) {
        WriteAll(patience, file_, path_, content);
        Flush(file_);
        file_.Reset();
    }

    const std::string& Path() const noexcept { return path_; }
    void Keep() noexcept { kept_ = true; }

  private:
    // False if another program has this file open.
    bool Create(Patience& patience) {
        for (;;) {
            file_.Reset(CreateFileA(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
            if (file_)
                return true;
            if (GetLastError() == ERROR_SHARING_VIOLATION)
                return false;
            if (!patience.TryAgain(path_))
                ThrowLastError();
        }
    }

    std::string path_;
    FileHandle file_;
    bool kept_ = false;
};

// Moving over a file that another program has open fails as "access denied", like moving over a folder.
// Opening it for deletion distinguishes the two, before anything is written. Some systems move over a
// write-protected file.
void RequireReplaceable(Patience& patience, const std::string& path) {
    if (HasAttribute(path, FILE_ATTRIBUTE_READONLY))
        ThrowSystemError(ERROR_ACCESS_DENIED);
    const FileHandle existing = TryOpen(patience, path, DELETE, ShareAll, OPEN_EXISTING);
    if (!existing && GetLastError() != ERROR_FILE_NOT_FOUND)
        ThrowLastError();
}

// False if `flags` do not allow replacing a file and it exists.
bool TryMove(Patience& patience, const std::string& from, const std::string& to, DWORD flags) {
    while (!MoveFileExA(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH)) {
        if (GetLastError() == ERROR_ALREADY_EXISTS || GetLastError() == ERROR_FILE_EXISTS)
            return false;
        if (!patience.TryAgain(to))
            ThrowLastError();
    }
    return true;
}

void MoveOver(Patience& patience, const std::string& from, const std::string& to) {
    if (!TryMove(patience, from, to, MOVEFILE_REPLACE_EXISTING))
        ThrowSystemError(ERROR_ALREADY_EXISTS);
}

std::wstring ModulePath() {
    // The call truncates a path that does not fit and fills the buffer.
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    if (length == 0)
        ThrowLastError();
    path.resize(length);
    return path;
}

// On a drive that is not connected, some files are reported as not found.
bool FolderExists(const std::string& path) noexcept {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos || HasAttribute(path.substr(0, slash + 1), FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

std::string FilesWin::ProgramFolder() const {
    const std::wstring path = ModulePath();
    return ExpressiblePath(path.substr(0, path.find_last_of(L'\\') + 1));
}

std::optional<std::string> FilesWin::ReadIfThere(const std::string& path) const {
    Patience patience;
    const FileHandle file = TryOpen(patience, path, GENERIC_READ, ShareAll, OPEN_EXISTING);
    if (!file) {
        const DWORD error = GetLastError();
        if (ErrorNumberOf(error) != ErrorNumber::FileNotFound)
            ThrowSystemError(error);
        if (!FolderExists(path))
            ThrowSystemError(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    std::string content;
    for (;;) {
        const std::size_t before = content.size();
        content.resize(before + BlockSize);
        DWORD got = 0;
        while (!ReadFile(file.Get(), content.data() + before, static_cast<DWORD>(BlockSize), &got, nullptr))
            if (!patience.TryAgain(path))
                ThrowLastError();
        content.resize(before + got);
        if (got == 0)
            return content;
    }
}

void FilesWin::Replace(const std::string& path, std::string_view content) {
    Patience patience;
    RequireReplaceable(patience, path);
    TemporaryFile temporary(patience, path);
    temporary.Fill(patience, content);
    MoveOver(patience, temporary.Path(), path);
    temporary.Keep();
}

bool FilesWin::WriteNew(const std::string& path, std::string_view content) {
    if (GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        return false;
    Patience patience;
    TemporaryFile temporary(patience, path);
    temporary.Fill(patience, content);
    if (!TryMove(patience, temporary.Path(), path, 0))
        return false;
    temporary.Keep();
    return true;
}

void FilesWin::Write(const std::string& path, std::string_view content) {
    WriteInto(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS, content);
}

void FilesWin::Append(const std::string& path, std::string_view content) {
    // Readers and a second instance's log entry are allowed: every write goes to the current end.
    WriteInto(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS, content);
}

void FilesWin::WriteInto(const std::string& path, DWORD access, DWORD share, DWORD disposition,
                         std::string_view content) {
    Patience patience = waitedInVain_.contains(path) ? Patience::None() : Patience();
    waitedInVain_.insert(path);
    WriteAll(patience, Open(patience, path, access, share, disposition), path, content);
    waitedInVain_.erase(path);
}

void FilesWin::Move(const std::string& from, const std::string& to) {
    Patience patience;
    RequireReplaceable(patience, to);
    Flush(Open(patience, from, GENERIC_WRITE, ShareAll, OPEN_EXISTING));
    MoveOver(patience, from, to);
}

void FilesWin::Remove(const std::string& path) {
    Patience patience;
    if (HasAttribute(path, FILE_ATTRIBUTE_READONLY))
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    while (!DeleteFileA(path.c_str()))
        if (!patience.TryAgain(path))
            ThrowLastError();
}

bool FilesWin::IsFile(const std::string& path) const {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FilesWin::AnyMatch(const std::string& pattern) const {
    constexpr DWORD NotNormal = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    WIN32_FIND_DATAA entry;
    const FileSearch search(FindFirstFileA(pattern.c_str(), &entry));
    if (!search)
        return false;
    do {
        if ((entry.dwFileAttributes & NotNormal) == 0)
            return true;
    } while (FindNextFileA(search.Get(), &entry));
    return false;
}

} // namespace quarn
