#pragma once

#include "win32/WindowsHeaders.h"

#include <stdexcept>

namespace quarn {

// Puts a function of the test in the place of one that this program imports from the system, for as long as
// this lives: the test sees what the system is asked for, and answers instead of it. What the system's
// libraries call among themselves stays.
class ReplacedImport {
  public:
    template<class Function>
    ReplacedImport(Function* imported, Function* replacement)
        : original_(reinterpret_cast<ULONG_PTR>(imported)), entry_(EntryOf(original_)) {
        Store(reinterpret_cast<ULONG_PTR>(replacement));
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() { Store(original_); }

  private:
    // The place in the program's tables of imports from which every call takes the function's address.
    static ULONG_PTR* EntryOf(ULONG_PTR function) {
        BYTE* const program = reinterpret_cast<BYTE*>(GetModuleHandleA(nullptr));
        const auto* const dosHeader = reinterpret_cast<const IMAGE_DOS_HEADER*>(program);
        const auto* const header = reinterpret_cast<const IMAGE_NT_HEADERS*>(program + dosHeader->e_lfanew);
        const DWORD imports =
            header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(program + imports);
             library->FirstThunk != 0; ++library)
            for (auto* entry = reinterpret_cast<ULONG_PTR*>(program + library->FirstThunk); *entry != 0;
                 ++entry)
                if (*entry == function)
                    return entry;
        throw std::logic_error("the program does not import this function");
    }

    void Store(ULONG_PTR function) noexcept {
        DWORD protection = 0;
        VirtualProtect(entry_, sizeof *entry_, PAGE_READWRITE, &protection);
        *entry_ = function;
        VirtualProtect(entry_, sizeof *entry_, protection, &protection);
    }

    ULONG_PTR original_;
    ULONG_PTR* entry_;
};

} // namespace quarn
