#pragma once

// Memory inside another process. The messages of the common controls contain pointers that Windows does not
// translate between processes, so their structures and texts must be in the control's process. Both processes
// must have the same bitness.

#include <windows.h>

#include <cstddef>
#include <string>

namespace quarn::uidrive {

class RemoteMemory {
  public:
    // Allocates zeroed memory in the process; freed with this object.
    RemoteMemory(HANDLE process, std::size_t size);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    void* Address() const noexcept { return address_; }
    LPARAM Parameter() const noexcept { return reinterpret_cast<LPARAM>(address_); }

    void Write(const void* from, std::size_t size);
    void Read(void* to, std::size_t size) const;
    // The text in the memory, up to its NUL.
    std::string ReadText() const;

  private:
    HANDLE process_;
    void* address_;
    std::size_t size_;
};

// A structure in the other process: written on construction, read back on request.
template<class T>
class RemoteStruct {
  public:
    RemoteStruct(HANDLE process, const T& value) : memory_(process, sizeof(T)) { Set(value); }

    LPARAM Parameter() const noexcept { return memory_.Parameter(); }

    void Set(const T& value) { memory_.Write(&value, sizeof value); }
    T Get() const {
        T value;
        memory_.Read(&value, sizeof value);
        return value;
    }

  private:
    RemoteMemory memory_;
};

} // namespace quarn::uidrive
