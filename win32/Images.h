#pragma once

// The program's icons as image lists, addressed by their keys. They are made from the icon resources for the
// pixel size of the DPI, and made again when the DPI changes.

#include "win32/Handles.h"

#include <commctrl.h>
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

    // No images.
    Images() noexcept = default;

    // Square images from the icon resources named by the keys.
    Images(int size, const std::vector<std::string>& keys, Look look = Look::Available);

    // Has no images, and makes the rows of a list as high as images of this size would.
    static Images Spacer(int height);

    // Adds an image that shows nothing.
    void AddTransparent(const std::string& key);

    // Adds the flags of the countries, under their codes.
    void AddFlags();

    int Size() const noexcept { return size_; }
    HIMAGELIST Handle() const noexcept { return list_.Get(); }

    std::vector<std::string> Keys() const;

    // I_IMAGENONE if there is no such image.
    int IndexOf(std::string_view key) const noexcept;

  private:
    // Returns the first one's index. Throws the system's error.
    int Add(const std::vector<Pixels>& pictures);

    struct ListKind {
        using Type = HIMAGELIST;
        static Type Empty() noexcept { return nullptr; }
        static void Free(Type handle) noexcept { ImageList_Destroy(handle); }
    };

    int size_ = 0;
    UniqueHandle<ListKind> list_;
    std::map<std::string, int, std::less<>> indexes_;
};

} // namespace quarn
