#pragma once

#include <QObject>

class CKestWnd;
class QLabel;
class QStatusBar;

namespace ormalux::viewer {

/// The status bar's fields: the pixel under the mouse and its value, the picture's size and depth, the zoom,
/// the region of interest and the place in the list of pictures. They keep their width while values change.
class StatusLine : public QObject
{
    Q_OBJECT

public:
    StatusLine(QStatusBar& bar, CKestWnd& window);

    /// The place in the list, from 0; nothing is shown for a list of one.
    void setPage(int index, int count);
    /// How many bits a channel of the picture has in its file, and how many its levels need; what is lost of
    /// more than 8 is said until the next picture.
    void setFileBits(int bits, int used);
    /// Writes every text again, after the language has changed.
    void retranslate();

private:
    void showPixel(int x, int y, unsigned int value);
    void showPicture();
    void showLoss();
    void showZoom();
    void showRegion();
    QLabel* field(const char* name, const QString& widest);

    QStatusBar& m_bar;
    CKestWnd& m_window;
    QLabel* m_pixel;
    QLabel* m_page;
    QLabel* m_picture;
    QLabel* m_loss;
    QLabel* m_region;
    QLabel* m_zoom;
    int m_index = 0;
    int m_count = 0;
    int m_fileBits = 8;
    int m_usedBits = 8;
};

} // namespace ormalux::viewer
