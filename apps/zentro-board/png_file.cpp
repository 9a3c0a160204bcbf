#include "apps/zentro-board/png_file.h"

#include <png.h>

namespace zentro {

std::string PngOf(const world::PixelImage& image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png);
    std::string file(size, '\0');
    const bool done = png_image_write_to_memory(&png, file.data(), &size, 0, image.pixels.data(), 0,
                                                nullptr) != 0;
    file.resize(done ? size : 0);
    return file;
}

}  // namespace zentro
