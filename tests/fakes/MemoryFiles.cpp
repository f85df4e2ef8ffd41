#include "tests/fakes/MemoryFiles.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quarn {

namespace {

std::string Key(std::string_view path) {
    std::string key(path);
    for (char& c : key) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        else if (c == '/')
            c = '\\';
    }
    if (key.size() > 1 && key.back() == '\\')
        key.pop_back();
    return key;
}

std::string_view FolderOf(std::string_view path) {
    const std::size_t slash = path.rfind('\\');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

bool Matches(std::string_view pattern, std::string_view name) {
    if (pattern.empty())
        return name.empty();
    if (pattern.front() == '*')
        return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
    return !name.empty() && (pattern.front() == '?' || pattern.front() == name.front()) &&
           Matches(pattern.substr(1), name.substr(1));
}

} // namespace

std::string MemoryFiles::ProgramFolder() const {
    if (!programFolderHasName)
        throw RunTimeError(ErrorNumber::BadFileName);
    return programFolder;
}

const MemoryFiles::Stored& MemoryFiles::Existing(const std::string& path) const {
    const std::string key = Key(path);
    if (folders_.contains(key))
        throw RunTimeError(ErrorNumber::PathFileAccessError);
    const auto found = files_.find(key);
    if (found == files_.end())
        throw RunTimeError(ErrorNumber::FileNotFound);
    return found->second;
}

std::optional<std::string> MemoryFiles::ReadIfThere(const std::string& path) const {
    const std::string key = Key(path);
    ++reads_[key];
    if (const auto fault = readFaults_.find(key); fault != readFaults_.end() && fault->second.timesLeft > 0) {
        --fault->second.timesLeft;
        throw RunTimeError(fault->second.error);
    }
    if (folders_.contains(key))
        throw RunTimeError(ErrorNumber::PathFileAccessError);
    const auto found = files_.find(key);
    return found == files_.end() ? std::nullopt : std::optional(found->second.content);
}

void MemoryFiles::BeginWrite(const std::string& path) {
    if (whileWriting)
        whileWriting(path);
    const std::string key = Key(path);
    ++writes_[key];
    if (const auto fault = writeFaults_.find(key); fault != writeFaults_.end())
        throw RunTimeError(fault->second);
    if (folders_.contains(key) || protected_.contains(key))
        throw RunTimeError(ErrorNumber::PathFileAccessError);
}

std::string_view MemoryFiles::TakeSpaceFor(std::string_view content) {
    if (!freeBytes)
        return content;
    const std::string_view fitting = content.substr(0, *freeBytes);
    *freeBytes -= fitting.size();
    return fitting;
}

void MemoryFiles::FreeSpaceOf(const std::string& path) {
    if (freeBytes && IsFile(path))
        *freeBytes += Existing(path).content.size();
}

void MemoryFiles::Replace(const std::string& path, std::string_view content) {
    BeginWrite(path);
    if (freeBytes && *freeBytes < content.size())
        throw RunTimeError(ErrorNumber::DiskFull);
    TakeSpaceFor(content);
    FreeSpaceOf(path);
    Put(path, std::string(content));
}

bool MemoryFiles::WriteNew(const std::string& path, std::string_view content) {
    if (IsFile(path) || folders_.contains(Key(path)))
        return false;
    Replace(path, content);
    return true;
}

void MemoryFiles::Write(const std::string& path, std::string_view content) {
    BeginWrite(path);
    FreeSpaceOf(path);
    const std::string_view fitting = TakeSpaceFor(content);
    Put(path, std::string(fitting));
    if (fitting.size() < content.size())
        throw RunTimeError(ErrorNumber::DiskFull);
}

void MemoryFiles::Append(const std::string& path, std::string_view content) {
    BeginWrite(path);
    const std::string_view fitting = TakeSpaceFor(content);
    Put(path, (IsFile(path) ? Existing(path).content : std::string()) + std::string(fitting));
    if (fitting.size() < content.size())
        throw RunTimeError(ErrorNumber::DiskFull);
}

void MemoryFiles::Move(const std::string& from, const std::string& to) {
    const std::string content = Existing(from).content;
    BeginWrite(from);
    BeginWrite(to);
    FreeSpaceOf(to);
    files_.erase(Key(from));
    Put(to, content);
}

void MemoryFiles::Remove(const std::string& path) {
    Existing(path);
    protected_.erase(Key(path));
    BeginWrite(path);
    FreeSpaceOf(path);
    files_.erase(Key(path));
}

bool MemoryFiles::IsFile(const std::string& path) const {
    return files_.contains(Key(path));
}

bool MemoryFiles::AnyMatch(const std::string& pattern) const {
    const std::string key = Key(pattern);
    const std::string_view folder = FolderOf(key);
    std::string_view name = std::string_view(key).substr(folder.size());
    if (name == "*.*") // matches every name, even one without a dot
        name = "*";
    return std::any_of(files_.begin(), files_.end(), [&](const auto& file) {
        const std::string_view path = file.first;
        return FolderOf(path) == folder && Matches(name, path.substr(folder.size()));
    });
}

void MemoryFiles::Put(const std::string& path, std::string content) {
    files_.try_emplace(Key(path), Stored{path, {}}).first->second.content = std::move(content);
}

std::string MemoryFiles::Get(const std::string& path) const {
    const auto found = files_.find(Key(path));
    if (found != files_.end())
        return found->second.content;
    ADD_FAILURE() << "No such file: " << path;
    return {};
}

void MemoryFiles::PutFolder(const std::string& path) {
    folders_.insert(Key(path));
}

std::vector<std::string> MemoryFiles::Paths() const {
    std::vector<std::string> paths;
    for (const auto& file : files_)
        paths.push_back(file.second.path);
    return paths;
}

void MemoryFiles::FailReads(const std::string& path, ErrorNumber error, std::int32_t times) {
    readFaults_.insert_or_assign(Key(path), ReadFault{error, times});
}

void MemoryFiles::FailWrites(const std::string& path, ErrorNumber error) {
    writeFaults_.insert_or_assign(Key(path), error);
}

void MemoryFiles::ClearFaults() {
    readFaults_.clear();
    writeFaults_.clear();
    freeBytes.reset();
}

void MemoryFiles::Protect(const std::string& path) {
    protected_.insert(Key(path));
}

void MemoryFiles::Unprotect(const std::string& path) {
    protected_.erase(Key(path));
}

std::int32_t MemoryFiles::Reads(const std::string& path) const {
    const auto found = reads_.find(Key(path));
    return found == reads_.end() ? 0 : found->second;
}

std::int32_t MemoryFiles::Writes(const std::string& path) const {
    const auto found = writes_.find(Key(path));
    return found == writes_.end() ? 0 : found->second;
}

std::int32_t MemoryFiles::TotalWrites() const {
    std::int32_t total = 0;
    for (const auto& file : writes_)
        total += file.second;
    return total;
}

} // namespace quarn
