#pragma once

// The program's pictures as image lists, addressed by their keys. They are made from the icon resources for
// the pixel size that the DPI asks for, and made anew when it changes.

#include "win32/WindowsHeaders.h"

#include <commctrl.h>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

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
    // Returns the first one's index. Throws the system's error.
    int Add(const std::vector<Pixels>& pictures);

    int size_ = 0;
    HIMAGELIST list_ = nullptr;
    std::map<std::string, int, std::less<>> indexes_;
};

} // namespace quarn
