#pragma once

#include "image/PictureOrigin.h"

#include <QImage>
#include <QString>

class CKestWnd;

namespace ormalux::viewer {

/// Shows a picture file of any kind, upright and in its own gray levels or colours, at the fit zoom. origin,
/// when given, becomes what the file held. False with the picture as it was when that fails; why then says it
/// in the operator's language and names the file.
bool openPicture(CKestWnd& window, const QString& path, QString* why, PictureOrigin* origin = nullptr);

/// Turns the picture by quarters, clockwise, every pixel exactly; width and height change places. Shown at
/// the fit zoom. False with the picture as it was when there is none or memory is short.
bool turnPicture(CKestWnd& window, int quarters);

/// Writes the picture alone as a file of the kind that the path's ending names. A file is written whole or
/// not at all. False when that fails; why then says it.
bool savePicture(CKestWnd& window, const QString& path, QString* why);
bool saveImage(const QImage& image, const QString& path, QString* why);

/// Copies of what the window holds: the picture, the whole picture with the overlays at one device pixel for
/// each pixel, and the part on the screen as it is seen. Null without a picture.
QImage pictureOf(CKestWnd& window);
QImage pictureWithOverlays(CKestWnd& window);
QImage screenOf(CKestWnd& window);

} // namespace ormalux::viewer
