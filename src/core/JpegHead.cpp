#include "core/JpegHead.h"

#include <QIODevice>

namespace JpegHead {

namespace {

// A camera writes a dozen segments; a head that does not end there is up to no good.
constexpr int mostSegments = 1000;

constexpr int startOfImage = 0xd8;
constexpr int baseline = 0xc0;
constexpr int extendedSequential = 0xc1;

int readByte(QIODevice& device)
{
    char byte = 0;
    return device.getChar(&byte) ? static_cast<unsigned char>(byte) : -1;
}

// The code of the next marker, past the bytes that may fill the room in front of it; -1 when
// something else comes.
int readMarker(QIODevice& device)
{
    if (readByte(device) != 0xff)
        return -1;
    int code = 0xff;
    for (int filled = 0; code == 0xff && filled < mostSegments; ++filled)
        code = readByte(device);
    return code == 0xff ? -1 : code;
}

bool skipSegment(QIODevice& device)
{
    const int high = readByte(device);
    const int low = readByte(device);
    if (high < 0 || low < 0)
        return false;
    const int size = high * 256 + low - 2; // the size counts itself
    return size >= 0 && device.skip(size) == size;
}

// The codes of the segments that begin a picture's data; three in their row mean something else.
bool isFrame(int marker)
{
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

} // namespace

bool needsWholePicture(QIODevice& device)
{
    if (readMarker(device) != startOfImage)
        return true;
    for (int segment = 0; segment < mostSegments; ++segment) {
        const int marker = readMarker(device);
        if (isFrame(marker))
            return marker != baseline && marker != extendedSequential;
        if (marker < 0 || !skipSegment(device))
            return true;
    }
    return true;
}

} // namespace JpegHead
