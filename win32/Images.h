#pragma once

// The program's pictures as image lists, addressed by their keys. They are made from the icon resources for
// the pixel size that the DPI asks for, and made anew when it changes.

#include "win32/Handles.h"

#include <commctrl.h>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

struct IconKind {
    using Type = HICON;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DestroyIcon(handle); }
};
using IconHandle = UniqueHandle<IconKind>;

// An icon of the resources in a size; empty when there is none of this name.
IconHandle LoadIconOfSize(const char* key, int size) noexcept;

class Pixels;

// Owns the image list. A control that uses it must not outlive it.
class Images {
  public:
    enum class Look { Available, Disabled };

    // No pictures.
    Images() noexcept = default;

    // Square pictures from the icon resources named by the keys.
    Images(int size, std::initializer_list<const char*> keys, Look look = Look::Available);
    Images(Images&& other) noexcept;
    Images& operator=(Images&& other) noexcept;
    ~Images();

    // Adds the flags of the countries, under their codes.
    void AddFlags();

    HIMAGELIST Handle() const noexcept { return list_; }

    std::vector<std::string> Keys() const;

    // I_IMAGENONE when there is no such picture.
    int IndexOf(std::string_view key) const noexcept;

  private:
    void Add(const std::string& key, const Pixels& picture);

    int size_ = 0;
    HIMAGELIST list_ = nullptr;
    std::map<std::string, int, std::less<>> indexes_;
};

} // namespace quarn
