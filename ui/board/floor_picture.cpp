#include "ui/board/floor_picture.h"

#include <QBuffer>
#include <QColor>
#include <QCoreApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "config/file.h"
#include "desktop/text_file.h"
#include "world/floor_picture.h"

namespace zentro {

namespace {

constexpr double kPixelsPerCentimetre = 2;  // an eye sees a patch of two centimetres
constexpr std::size_t kMostFileBytes = 50'000'000;
constexpr int kBytesPerDigit = 17;  // 255 levels of grey are 15 shades

QSize PixelsFor(const world::Floor& floor) {
    const double most = static_cast<double>(world::kMostPictureSide);
    const double density =
        std::min(kPixelsPerCentimetre, most / std::max(floor.width, floor.height));
    return {std::max(2, static_cast<int>(std::lround(floor.width * density))),
            std::max(2, static_cast<int>(std::lround(floor.height * density)))};
}

/// On white, as on paper, and in grey.
QImage OnPaper(const QImage& image, const QSize& pixels) {
    QImage paper(pixels, QImage::Format_RGB32);
    paper.fill(Qt::white);
    const QImage fitting = image.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&paper);
    painter.drawImage((pixels.width() - fitting.width()) / 2,
                      (pixels.height() - fitting.height()) / 2, fitting);
    painter.end();
    return paper.convertToFormat(QImage::Format_Grayscale8);
}

world::FloorPicture ShadesOf(const QImage& grey) {
    world::FloorPicture picture;
    picture.columns = static_cast<std::size_t>(grey.width());
    for (int row = 0; row < grey.height(); ++row) {
        const uchar* level = grey.constScanLine(row);
        for (int column = 0; column < grey.width(); ++column)
            picture.shades.push_back(
                static_cast<std::uint8_t>((level[column] + kBytesPerDigit / 2) / kBytesPerDigit));
    }
    return picture;
}

}  // namespace

LoadedPicture LoadFloorPicture(const QString& path, const world::Floor& floor) {
    const FileContent file = ReadWholeFile(SystemPath(path), kMostFileBytes);
    if (file.status != FileContent::Status::Read) return {{}, QString::fromStdString(file.problem)};
    QByteArray bytes = QByteArray::fromStdString(file.bytes);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull())
        return {{},
                QCoreApplication::translate("FloorPicture",
                                            "It is no picture that can be read here (%1). Save it "
                                            "as a PNG file and choose that.")
                    .arg(reader.errorString())};
    return {ShadesOf(OnPaper(image, PixelsFor(floor))), {}};
}

QImage ShadowOf(const world::FloorPicture& picture, const QColor& ink) {
    const auto columns = static_cast<int>(picture.columns);
    QImage shadow(columns, static_cast<int>(picture.Rows()), QImage::Format_ARGB32);
    for (int row = 0; row < shadow.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(shadow.scanLine(row));
        const std::uint8_t* shades =
            &picture.shades[static_cast<std::size_t>(row) * picture.columns];
        for (int column = 0; column < columns; ++column)
            pixels[column] =
                qRgba(ink.red(), ink.green(), ink.blue(), 255 - shades[column] * kBytesPerDigit);
    }
    return shadow;
}

}  // namespace zentro
