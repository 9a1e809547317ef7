#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/qt/ZelQtPictureLoader.h>

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>

#include <climits>
#include <cstring>

namespace {

// A buffer that notes whether a reader asked for bytes past its end. Qt's bitmap
// reader keeps what it could read of a file cut inside its pixels; for that format
// a short read means a damaged file.
class WatchedBuffer : public QBuffer {
public:
    bool shortRead = false;

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 n = QBuffer::readData(data, maxSize);
        if (n < maxSize)
            shortRead = true;
        return n;
    }
};

} // namespace

HBITMAP ZelQtLoadPicture(const void* data, std::size_t size)
{
    if (!data || size == 0 || size > static_cast<std::size_t>(INT_MAX))
        return nullptr;
    const QByteArray bytes = QByteArray::fromRawData(static_cast<const char*>(data), static_cast<int>(size));
    WatchedBuffer buffer;
    buffer.setData(bytes);
    // Unbuffered, so that each read the reader makes is the one the buffer sees.
    if (!buffer.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return nullptr;
    QImageReader reader(&buffer);
    // Finding the format peeks at more than a small file may hold; only the reads
    // of the picture itself count.
    const bool bitmapFile = reader.format() == "bmp";
    buffer.shortRead = false;
    QImage image;
    if (!reader.read(&image) || image.isNull() || (bitmapFile && buffer.shortRead))
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
