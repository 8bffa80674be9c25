#include "app/StatusLine.h"

#include "view/ImageViewWnd.h"

#include <QLabel>
#include <QStatusBar>

namespace ormalux::viewer {

StatusLine::StatusLine(QStatusBar& bar, CKestWnd& window) : QObject(&bar), m_bar(bar), m_window(window)
{
    m_pixel = field("pixel", QStringLiteral("X 20000  Y 20000   R 255  G 255  B 255"));
    m_bar.addWidget(m_pixel);
    m_page = field("page", QString());
    m_picture = field("picture", QStringLiteral("20000 x 20000  24 bit"));
    m_loss = field("loss", QString());
    QFont striking = m_loss->font();
    striking.setBold(true);
    m_loss->setFont(striking);
    m_region = field("region", QStringLiteral("ROI 2000, 2000 - 2000, 2000 (2000 x 2000)"));
    m_zoom = field("zoom", QStringLiteral("2500.0 %"));
    for (QLabel* const label : {m_loss, m_page, m_region, m_picture, m_zoom})
        m_bar.addPermanentWidget(label);

    const CKestView* const view = window.GetView();
    connect(view, &CKestView::pixelHovered, this, &StatusLine::showPixel);
    connect(view, &CKestView::imageChanged, this, &StatusLine::showPicture);
    connect(view, &CKestView::zoomChanged, this, &StatusLine::showZoom);
    connect(view, &CKestView::trackerChanged, this, &StatusLine::showRegion);
    retranslate();
}

QLabel* StatusLine::field(const char* name, const QString& widest)
{
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest));
    label->setContentsMargins(4, 0, 4, 0);
    return label;
}

void StatusLine::setPage(int index, int count)
{
    m_index = index;
    m_count = count;
    m_page->setVisible(count > 1);
    m_page->setText(QStringLiteral("%1 / %2").arg(index + 1).arg(count));
}

void StatusLine::setFileBits(int bits, int used)
{
    m_fileBits = bits;
    m_usedBits = used;
    showLoss();
}

void StatusLine::showLoss()
{
    m_loss->setVisible(m_fileBits > 8);
    m_loss->setText(
        m_usedBits < m_fileBits
            ? tr("%1비트 중 %2비트만 쓰여 어둡습니다 (8비트로 줄임)").arg(m_fileBits).arg(m_usedBits)
            : tr("%1비트를 8비트로 줄였습니다").arg(m_fileBits));
    m_loss->setToolTip(
        tr("파일에는 채널마다 %1비트가 있습니다. 보이고 재고 저장하는 것은 8비트로 줄인 그림입니다.")
            .arg(m_fileBits));
}

void StatusLine::retranslate()
{
    m_pixel->setAccessibleName(tr("마우스 아래의 화소"));
    m_page->setAccessibleName(tr("그림 순서"));
    m_picture->setAccessibleName(tr("그림 크기"));
    m_region->setAccessibleName(tr("ROI 영역"));
    m_zoom->setAccessibleName(tr("배율"));
    showPixel(-1, -1, 0);
    showPicture();
    showLoss();
    showRegion();
}

void StatusLine::showPixel(int x, int y, unsigned int value)
{
    if (x < 0) {
        m_pixel->clear();
        return;
    }
    const QString levels = m_window.GetBitCount() == 8 ? tr("값 %1").arg(value)
                                                       : QStringLiteral("R %1  G %2  B %3")
                                                             .arg(value >> 16 & 255)
                                                             .arg(value >> 8 & 255)
                                                             .arg(value & 255);
    m_pixel->setText(QStringLiteral("X %1  Y %2   %3").arg(x).arg(y).arg(levels));
}

void StatusLine::showPicture()
{
    if (m_window.GetImagePtr())
        m_picture->setText(tr("%1 x %2  %3 bit")
                               .arg(m_window.GetWidth())
                               .arg(m_window.GetHeight())
                               .arg(m_window.GetBitCount()));
    else
        m_picture->setText(tr("그림 없음"));
    showZoom();
}

void StatusLine::showZoom()
{
    const double percent = 100.0 * double(m_window.GetView()->GetZoom());
    m_zoom->setText(m_window.GetImagePtr()
                        ? QStringLiteral("%1 %").arg(percent, 0, 'f', percent < 100 ? 1 : 0)
                        : QString());
}

void StatusLine::showRegion()
{
    if (!m_window.IsTrackerMode()) {
        m_region->clear();
        return;
    }
    const CRect r = m_window.GetTrackerRect();
    m_region->setText(QStringLiteral("ROI %1, %2 - %3, %4 (%5 x %6)")
                          .arg(r.left)
                          .arg(r.top)
                          .arg(r.right)
                          .arg(r.bottom)
                          .arg(r.Width() + 1)
                          .arg(r.Height() + 1));
}

} // namespace ormalux::viewer
