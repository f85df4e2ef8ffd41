// Reads PNG files with Windows' own decoder, which gives pixels whose colors are not multiplied by their
// alpha. For an icon that the system has made of such a file, this is not documented.

#include "win32/ComApartment.h"
#include "win32/Handles.h"
#include "win32/Pixels.h"

#include <wincodec.h>

namespace quarn {

namespace {

template<class Interface>
struct ComKind {
    using Type = Interface*;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type object) noexcept { object->Release(); }
};

template<class Interface>
using ComPointer = UniqueHandle<ComKind<Interface>>;

ComPointer<IWICFormatConverter> FirstFrame(std::string_view file) {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICStream> stream;
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    ComPointer<IWICFormatConverter> converter;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): it is only read.
    BYTE* const bytes = reinterpret_cast<BYTE*>(const_cast<char*>(file.data()));
    const bool done = SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                                 __uuidof(IWICImagingFactory),
                                                 reinterpret_cast<void**>(factory.Receive()))) &&
                      SUCCEEDED(factory.Get()->CreateStream(stream.Receive())) &&
                      SUCCEEDED(stream.Get()->InitializeFromMemory(bytes, static_cast<DWORD>(file.size()))) &&
                      SUCCEEDED(factory.Get()->CreateDecoderFromStream(
                          stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand, decoder.Receive())) &&
                      SUCCEEDED(decoder.Get()->GetFrame(0, frame.Receive())) &&
                      SUCCEEDED(factory.Get()->CreateFormatConverter(converter.Receive())) &&
                      SUCCEEDED(converter.Get()->Initialize(frame.Get(), GUID_WICPixelFormat32bppBGRA,
                                                            WICBitmapDitherTypeNone, nullptr, 0,
                                                            WICBitmapPaletteTypeCustom));
    if (!done)
        converter.Reset();
    return converter;
}

} // namespace

std::optional<Pixels> Pixels::OfPng(std::string_view file) {
    const ComApartment apartment;
    const ComPointer<IWICFormatConverter> frame = FirstFrame(file);
    UINT width = 0;
    UINT height = 0;
    if (!frame || FAILED(frame.Get()->GetSize(&width, &height)) || width != height || width == 0 ||
        width > LargestImage)
        return std::nullopt;
    Pixels picture(static_cast<int>(width));
    const UINT rowSize = width * static_cast<UINT>(sizeof(Pixel));
    if (FAILED(frame.Get()->CopyPixels(nullptr, rowSize, rowSize * height,
                                       reinterpret_cast<BYTE*>(picture.pixels_.data()))))
        return std::nullopt;
    return picture;
}

} // namespace quarn
