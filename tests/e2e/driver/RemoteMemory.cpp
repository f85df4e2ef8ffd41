#include "tests/e2e/driver/RemoteMemory.h"

#include "tests/e2e/driver/Command.h"

#include <algorithm>

namespace quarn::uidrive {

RemoteMemory::RemoteMemory(HANDLE process, std::size_t size)
    : process_(process),
      address_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)),
      size_(size) {
    if (!address_)
        throw Failure("no memory can be taken in the other process; has it ended?");
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
}

void RemoteMemory::Write(const void* from, std::size_t size) {
    if (!WriteProcessMemory(process_, address_, from, size, nullptr))
        throw Failure("the other process's memory cannot be written");
}

void RemoteMemory::Read(void* to, std::size_t size) const {
    if (!ReadProcessMemory(process_, address_, to, size, nullptr))
        throw Failure("the other process's memory cannot be read");
}

std::string RemoteMemory::ReadText() const {
    std::string text(size_, '\0');
    Read(text.data(), size_);
    text.erase(std::find(text.begin(), text.end(), '\0'), text.end());
    return text;
}

} // namespace quarn::uidrive
