#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/qt/ZelQtPictureLoader.h>

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>

#include <climits>
#include <cstring>

HBITMAP ZelQtLoadPicture(const void* data, std::size_t size)
{
    if (!data || size == 0 || size > static_cast<std::size_t>(INT_MAX))
        return nullptr;
    const QByteArray bytes = QByteArray::fromRawData(static_cast<const char*>(data), static_cast<int>(size));
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return nullptr;
    image = image.convertToFormat(QImage::Format_ARGB32);
    HBITMAP b = CreateBitmap(image.width(), image.height(), 1, 32, nullptr);
    for (int y = 0; b && y < image.height(); ++y)
        std::memcpy(ZelBitmapScanLine(b, y), image.constScanLine(y), static_cast<std::size_t>(image.width()) * 4);
    return b;
}

void ZelInstallQtPictureLoader()
{
    ZelSetPictureLoader(&ZelQtLoadPicture);
}

namespace {
// Loading the widget library is enough to have the picture route.
const bool installed = (ZelInstallQtPictureLoader(), true);
} // namespace
