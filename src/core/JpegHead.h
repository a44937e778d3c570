#pragma once

class QIODevice;

/// What a JPEG file tells of itself before it is decoded.
namespace JpegHead {

/// Whether the picture comes in several passes, which a decoder has to hold whole in memory however
/// small it is wanted. True as well when the head cannot be made out. Reads from the device's
/// position on and not beyond the head.
[[nodiscard]] bool needsWholePicture(QIODevice& device);

} // namespace JpegHead
