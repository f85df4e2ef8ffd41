#include "win32/desktop/FilesWin.h"

#include "win32/Handles.h"
#include "win32/SystemError.h"

#include <algorithm>
#include <vector>

namespace quarn {

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// One call reads or writes at most this much: its count is 32 bits wide.
constexpr std::size_t BlockSize = 1 << 16;

// How many names that other programs hold a replacement passes over before it gives up.
constexpr int TemporaryNames = 100;

FileHandle Open(const std::string& path, DWORD access, DWORD share, DWORD disposition) {
    FileHandle file(
        CreateFileA(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        ThrowLastError();
    return file;
}

void WriteAll(const FileHandle& file, std::string_view content) {
    while (!content.empty()) {
        const auto block = static_cast<DWORD>(std::min(content.size(), BlockSize));
        DWORD written = 0;
        if (!WriteFile(file.Get(), content.data(), block, &written, nullptr))
            ThrowLastError();
        content.remove_prefix(written);
    }
}

// A file that vanishes again unless it was kept. What a crash has left under its name it takes over; what
// somebody works with it leaves alone.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& beside) {
        for (int i = 0; i < TemporaryNames; ++i) {
            path_ = beside + "." + std::to_string(i) + ".tmp";
            file_.Reset(CreateFileA(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
            if (file_)
                return;
            if (GetLastError() != ERROR_SHARING_VIOLATION)
                ThrowLastError();
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

    void Fill(std::string_view content) {
        WriteAll(file_, content);
        if (!FlushFileBuffers(file_.Get()))
            ThrowLastError();
        file_.Reset();
    }

    const std::string& Path() const noexcept { return path_; }
    void Keep() noexcept { kept_ = true; }

  private:
    std::string path_;
    FileHandle file_;
    bool kept_ = false;
};

// Moving over a file that somebody holds open fails as "access denied", like moving over a folder. Opening it
// for deletion tells the two apart, before anything is written.
void RequireReplaceable(const std::string& path) {
    const FileHandle existing(
        CreateFileA(path.c_str(), DELETE, ShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!existing && GetLastError() != ERROR_FILE_NOT_FOUND)
        ThrowLastError();
}

void MoveOver(const std::string& from, const std::string& to) {
    if (!MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        ThrowLastError();
}

} // namespace

std::string FilesWin::ProgramFolder() const {
    // The call cuts a path that does not fit and tells so by filling the buffer.
    std::string path(MAX_PATH, '\0');
    DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    if (length == 0)
        ThrowLastError();
    path.resize(length);
    return path.substr(0, path.find_last_of('\\') + 1);
}

std::string FilesWin::Read(const std::string& path) const {
    const FileHandle file = Open(path, GENERIC_READ, ShareAll, OPEN_EXISTING);
    std::string content;
    for (;;) {
        const std::size_t before = content.size();
        content.resize(before + BlockSize);
        DWORD got = 0;
        if (!ReadFile(file.Get(), content.data() + before, static_cast<DWORD>(BlockSize), &got, nullptr))
            ThrowLastError();
        content.resize(before + got);
        if (got == 0)
            return content;
    }
}

void FilesWin::Replace(const std::string& path, std::string_view content) {
    RequireReplaceable(path);
    TemporaryFile temporary(path);
    temporary.Fill(content);
    MoveOver(temporary.Path(), path);
    temporary.Keep();
}

void FilesWin::Write(const std::string& path, std::string_view content) {
    WriteAll(Open(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS), content);
}

void FilesWin::Append(const std::string& path, std::string_view content) {
    // Readers and a second instance's log entry are let in: every write goes to the end as it is then.
    WriteAll(Open(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS), content);
}

void FilesWin::Copy(const std::string& from, const std::string& to) {
    if (!CopyFileA(from.c_str(), to.c_str(), FALSE))
        ThrowLastError();
}

void FilesWin::Move(const std::string& from, const std::string& to) {
    RequireReplaceable(to);
    MoveOver(from, to);
}

void FilesWin::Remove(const std::string& path) {
    if (!DeleteFileA(path.c_str()))
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
