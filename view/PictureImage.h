#pragma once

#include "image/Picture.h"

#include <QImage>

namespace ormalux {

struct FileHead;

/// The gray form that tools measure on: (R + G + B) / 3. A gray picture comes back as it is.
Picture toGray(Picture picture);

/// A copy for the toolkit: gray pictures as Format_Grayscale8, colour ones as Format_BGR888. Null when there
/// are no pixels or memory is short. A gray image is toQImage({view.pixels, view.width, view.height,
/// view.stride}).
QImage toQImage(const PixelSource& source);
QImage toQImage(const ConstGrayView& gray);

/// Of the image that the toolkit made of the file's first page.
PictureOrigin originOf(const QImage& image, const FileHead& head, int pages);

} // namespace ormalux
