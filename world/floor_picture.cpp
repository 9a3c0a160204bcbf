#include "world/floor_picture.h"

#include <algorithm>

namespace zentro::world {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

/// Between which two pixels of a side a place lies.
struct Between {
    std::size_t first = 0;
    std::size_t second = 0;
    double share = 0;  ///< of the second
};

/// `part` is of the side's length, from 0 to 1.
Between PixelsAt(double part, std::size_t pixels) {
    const double last = static_cast<double>(pixels - 1);
    const double place = std::clamp(part * static_cast<double>(pixels) - 0.5, 0.0, last);
    const auto first = static_cast<std::size_t>(place);
    return {first, std::min(first + 1, pixels - 1), place - static_cast<double>(first)};
}

}  // namespace

double ShareAt(const FloorPicture& picture, const Floor& floor, const Point& place) {
    if (picture.shades.empty()) return 1;
    const Between column = PixelsAt(place.x / floor.width, picture.columns);
    const Between row = PixelsAt(1 - place.y / floor.height, picture.Rows());
    const auto shade = [&](std::size_t of) {
        const std::uint8_t* pixels = &picture.shades[of * picture.columns];
        const double first = pixels[column.first];
        return first + (pixels[column.second] - first) * column.share;
    };
    const double upper = shade(row.first);
    return (upper + (shade(row.second) - upper) * row.share) / kBrightestShade;
}

std::string AddRow(FloorPicture& picture, std::string_view digits) {
    if (digits.size() < 2 || digits.size() > kMostPictureSide)
        return "must be 2 to " + std::to_string(kMostPictureSide) + " digits";
    if (picture.columns != 0 && digits.size() != picture.columns)
        return "must have as many digits as the rows above it";
    if (digits.find_first_not_of(kDigits) != std::string_view::npos)
        return "must be digits from 0 (black) to 9 and a to f (as bright as the floor)";
    picture.columns = digits.size();
    for (const char digit : digits)
        picture.shades.push_back(static_cast<std::uint8_t>(kDigits.find(digit)));
    return {};
}

std::vector<std::string> RowsOf(const FloorPicture& picture) {
    std::vector<std::string> rows(picture.Rows());
    for (std::size_t pixel = 0; pixel < picture.shades.size(); ++pixel)
        rows[pixel / picture.columns] += kDigits[picture.shades[pixel]];
    return rows;
}

}  // namespace zentro::world
