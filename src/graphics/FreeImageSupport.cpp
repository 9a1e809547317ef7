#include "FreeImageSupport.h"

#include <FreeImage.h>

#include <cstdio>
#include <cstring>
#include <mutex>

namespace zelfi {

namespace {

void quiet(FREE_IMAGE_FORMAT, const char*) {}

// Failures are reported by value; FreeImage's own messages would only be noise.
void init()
{
    static std::once_flag once;
    std::call_once(once, [] { FreeImage_SetOutputMessage(quiet); });
}

FREE_IMAGE_FORMAT formatOf(const char* fileName)
{
    FREE_IMAGE_FORMAT fif = FreeImage_GetFileType(fileName, 0);
    if (fif == FIF_UNKNOWN)
        fif = FreeImage_GetFIFFromFilename(fileName);
    if (fif == FIF_UNKNOWN || !FreeImage_FIFSupportsReading(fif))
        return FIF_UNKNOWN;
    return fif;
}

// A file read for FreeImage that notes whether any read came up short.
// FreeImage's bitmap reader takes a file that ends inside its pixels and leaves
// the missing rows black; for that format a short read means a cut file.
struct WatchedFile {
    std::FILE* file = nullptr;
    bool shortRead = false;
};

unsigned DLL_CALLCONV readWatched(void* buffer, unsigned size, unsigned count, fi_handle handle)
{
    auto* w = static_cast<WatchedFile*>(handle);
    const std::size_t n = std::fread(buffer, size, count, w->file);
    if (n < count)
        w->shortRead = true;
    return static_cast<unsigned>(n);
}

unsigned DLL_CALLCONV writeNothing(void*, unsigned, unsigned, fi_handle)
{
    return 0;
}

int DLL_CALLCONV seekWatched(fi_handle handle, long offset, int origin)
{
    return std::fseek(static_cast<WatchedFile*>(handle)->file, offset, origin);
}

long DLL_CALLCONV tellWatched(fi_handle handle)
{
    return std::ftell(static_cast<WatchedFile*>(handle)->file);
}

} // namespace

bool load(const char* fileName, std::vector<std::uint32_t>& pixels, int& width, int& height, long long maxPixels)
{
    init();
    const FREE_IMAGE_FORMAT fif = formatOf(fileName);
    if (fif == FIF_UNKNOWN)
        return false;
    // Decoding makes (and clears) the whole image the header describes, however
    // short the file: a few bytes could ask for gigabytes. Where the format lets the
    // header be read alone, a size that can't be kept ends it first.
    if (FreeImage_FIFSupportsNoPixels(fif)) {
        int w = 0, h = 0, bpp = 0;
        if (!tell(fileName, w, h, bpp) || w < 1 || h < 1 || static_cast<long long>(w) * h > maxPixels)
            return false;
    }
    WatchedFile watched;
    watched.file = std::fopen(fileName, "rb");
    if (!watched.file)
        return false;
    FreeImageIO io{readWatched, writeNothing, seekWatched, tellWatched};
    FIBITMAP* image = FreeImage_LoadFromHandle(fif, &io, &watched, 0);
    std::fclose(watched.file);
    if (image && fif == FIF_BMP && watched.shortRead) {
        FreeImage_Unload(image);
        image = nullptr;
    }
    if (!image)
        return false;
    if (FreeImage_GetImageType(image) != FIT_BITMAP) {
        FIBITMAP* standard = FreeImage_ConvertToStandardType(image, TRUE);
        FreeImage_Unload(image);
        if (!standard)
            return false;
        image = standard;
    }
    FIBITMAP* wide = FreeImage_ConvertTo32Bits(image);
    FreeImage_Unload(image);
    if (!wide)
        return false;
    width = static_cast<int>(FreeImage_GetWidth(wide));
    height = static_cast<int>(FreeImage_GetHeight(wide));
    bool ok = width > 0 && height > 0;
    if (ok) {
        pixels.resize(static_cast<std::size_t>(width) * height);
        for (int y = 0; y < height; ++y) // FreeImage keeps its rows bottom-up
            std::memcpy(pixels.data() + static_cast<std::size_t>(y) * width, FreeImage_GetScanLine(wide, height - 1 - y),
                        static_cast<std::size_t>(width) * 4);
    }
    FreeImage_Unload(wide);
    return ok;
}

int save(int format, const std::uint32_t* pixels, int width, int height, int bitsPerPixel, const char* fileName)
{
    init();
    if (!pixels || width < 1 || height < 1 || !fileName)
        return 0;
    FIBITMAP* image = FreeImage_Allocate(width, height, 32);
    if (!image)
        return 0;
    bool anyAlpha = false;
    for (std::size_t i = 0, n = static_cast<std::size_t>(width) * height; i < n && !anyAlpha; ++i)
        anyAlpha = (pixels[i] >> 24) != 0;
    for (int y = 0; y < height; ++y) {
        BYTE* row = FreeImage_GetScanLine(image, height - 1 - y);
        std::memcpy(row, pixels + static_cast<std::size_t>(y) * width, static_cast<std::size_t>(width) * 4);
        if (!anyAlpha)
            for (int x = 0; x < width; ++x)
                row[4 * x + 3] = 0xFF;
    }
    FIBITMAP* made = image;
    switch (bitsPerPixel) {
    case 1: made = FreeImage_Threshold(image, 128); break;
    case 16: made = FreeImage_ConvertTo16Bits565(image); break;
    case 24: made = FreeImage_ConvertTo24Bits(image); break;
    default: break;
    }
    if (made != image)
        FreeImage_Unload(image);
    if (!made)
        return 0;
    if (FreeImage_GetBPP(made) == 16) {
        FIBITMAP* wide = FreeImage_ConvertTo32Bits(made);
        FreeImage_Unload(made);
        if (!wide)
            return 0;
        made = wide;
    }
    const int ok = FreeImage_Save(static_cast<FREE_IMAGE_FORMAT>(format), made, fileName, 0) ? 1 : 0;
    FreeImage_Unload(made);
    return ok;
}

bool tell(const char* fileName, int& width, int& height, int& bitsPerPixel)
{
    init();
    const FREE_IMAGE_FORMAT fif = formatOf(fileName);
    if (fif == FIF_UNKNOWN)
        return false;
    FIBITMAP* image = FreeImage_Load(fif, fileName, FIF_LOAD_NOPIXELS);
    if (!image)
        return false;
    width = static_cast<int>(FreeImage_GetWidth(image));
    height = static_cast<int>(FreeImage_GetHeight(image));
    bitsPerPixel = static_cast<int>(FreeImage_GetBPP(image));
    FreeImage_Unload(image);
    return true;
}

} // namespace zelfi
