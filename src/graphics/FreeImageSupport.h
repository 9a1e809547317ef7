// FreeImage behind plain types, private to the graphics folder. FreeImage's header
// brings its own Windows records, which clash with the platform's, so only
// FreeImageSupport.cpp includes it.
#pragma once

#include <cstdint>
#include <vector>

namespace zelfi {

// Reads a picture file of any format FreeImage knows (by content, else by
// extension) into width * height 32-bit pixels (byte 0 blue .. byte 3 alpha),
// top row first. False when FreeImage can't read it, for a bitmap file that ends
// before its pixels do, and for a picture of more than maxPixels pixels (found from
// the header alone where the format allows).
bool load(const char* fileName, std::vector<std::uint32_t>& pixels, int& width, int& height, long long maxPixels);

// Writes top-down 32-bit pixels to `fileName` in FreeImage format `format`. The
// image is made at `bitsPerPixel` (1, 16, 24 or 32) as a device bitmap of that depth
// would give it; a 16-bit image goes through a 32-bit conversion before it is saved.
// Pixels whose alpha bytes are all 0 are written opaque. Returns FreeImage's result
// (non-zero on success).
int save(int format, const std::uint32_t* pixels, int width, int height, int bitsPerPixel, const char* fileName);

// Width, height and bits a pixel of a picture file from its header; false when
// FreeImage can't read it.
bool tell(const char* fileName, int& width, int& height, int& bitsPerPixel);

} // namespace zelfi
