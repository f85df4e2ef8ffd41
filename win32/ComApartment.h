#pragma once

#include "win32/WindowsHeaders.h"

#include <objbase.h>

namespace quarn {

// Single-threaded COM for the current thread, while this object exists.
class ComApartment {
  public:
    ComApartment() noexcept
        : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (entered_)
            CoUninitialize();
    }

  private:
    bool entered_;
};

} // namespace quarn
