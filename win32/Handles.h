#pragma once

// Owners of system handles: each handle is released exactly once, by its kind's Free function. A kind is a
// struct that names the handle's type, its empty value and its release.

#include "win32/WindowsHeaders.h"

#include <oleauto.h>
#include <utility>

namespace quarn {

template<class Kind>
class UniqueHandle {
  public:
    using Type = typename Kind::Type;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Type handle) noexcept : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Type Get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != Kind::Empty(); }

    // Returns the handle, which the caller must release.
    Type Release() noexcept { return std::exchange(handle_, Kind::Empty()); }

    void Reset(Type handle = Kind::Empty()) noexcept {
        const Type old = std::exchange(handle_, handle);
        if (old != Kind::Empty())
            Kind::Free(old);
    }

    // For calls that return a handle through a pointer.
    Type* Receive() noexcept {
        Reset();
        return &handle_;
    }

  private:
    Type handle_ = Kind::Empty();
};

struct KernelObjectKind {
    using Type = HANDLE;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { CloseHandle(handle); }
};

struct HookKind {
    using Type = HHOOK;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { UnhookWindowsHookEx(handle); }
};

struct FileKind {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Free(Type handle) noexcept { CloseHandle(handle); }
};

struct FileSearchKind {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Free(Type handle) noexcept { FindClose(handle); }
};

struct ModuleKind {
    using Type = HMODULE;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { FreeLibrary(handle); }
};

struct RegistryKeyKind {
    using Type = HKEY;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { RegCloseKey(handle); }
};

struct GlobalMemoryKind {
    using Type = HGLOBAL;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { GlobalFree(handle); }
};

struct SocketKind {
    using Type = SOCKET;
    static Type Empty() noexcept { return INVALID_SOCKET; }
    static void Free(Type handle) noexcept { closesocket(handle); }
};

struct WindowKind {
    using Type = HWND;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DestroyWindow(handle); }
};

struct IconKind {
    using Type = HICON;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DestroyIcon(handle); }
};

struct BitmapKind {
    using Type = HBITMAP;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DeleteObject(handle); }
};

struct AutomationTextKind {
    using Type = BSTR;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { SysFreeString(handle); }
};

using KernelObject = UniqueHandle<KernelObjectKind>;
using FileHandle = UniqueHandle<FileKind>;
using FileSearch = UniqueHandle<FileSearchKind>;
using ModuleHandle = UniqueHandle<ModuleKind>;
using RegistryKey = UniqueHandle<RegistryKeyKind>;
using GlobalMemory = UniqueHandle<GlobalMemoryKind>;
using SocketHandle = UniqueHandle<SocketKind>;
using WindowHandle = UniqueHandle<WindowKind>;
using IconHandle = UniqueHandle<IconKind>;
using BitmapHandle = UniqueHandle<BitmapKind>;
using AutomationText = UniqueHandle<AutomationTextKind>;

} // namespace quarn
