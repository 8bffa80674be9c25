#include "tools/SourcePreview.h"

#include "tools/ThresholdGroup.h"

#include <QLabel>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace ormalux {

namespace {

constexpr QSize previewRoom(320, 180);

QImage wrapped(const ConstGrayView& view)
{
    return QImage(view.pixels, view.width, view.height, view.stride, QImage::Format_Grayscale8);
}

} // namespace

QPixmap enlarged(const QImage& image, const QSize& room, qreal ratio)
{
    if (image.isNull())
        return {};
    const QSizeF device = QSizeF(room) * ratio;
    const double fit = std::min(device.width() / image.width(), device.height() / image.height());
    const double step = fit >= 1 ? std::floor(fit) : 1 / std::ceil(1 / fit);
    const QSize size(std::max(1, int(image.width() * step)), std::max(1, int(image.height() * step)));
    QPixmap pixmap = QPixmap::fromImage(image.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

SourcePreview::SourcePreview(QWidget* parent)
    : QWidget(parent), m_level(new ThresholdGroup(this)), m_picture(new QLabel(this)),
      m_facts(new QLabel(this))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_level);
    column->addWidget(m_picture, 1);
    column->addWidget(m_facts);
    m_picture->setObjectName(QStringLiteral("preview"));
    m_picture->setAccessibleName(tr("Preview"));
    m_picture->setFrameStyle(int(QFrame::StyledPanel) | int(QFrame::Sunken));
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setMinimumSize(previewRoom + QSize(8, 8));
    m_picture->setBackgroundRole(QPalette::Mid); // neither black nor white: the template's edge is seen
    m_picture->setAutoFillBackground(true);
    m_facts->setObjectName(QStringLiteral("facts"));
    connect(m_level, &ThresholdGroup::changed, this, &SourcePreview::refresh);
}

void SourcePreview::setRegion(const CKestImage& region, std::optional<int> level)
{
    m_region = region;
    const QSignalBlocker quiet(m_level);
    if (level)
        m_level->showValue(*level);
    m_level->setAutomatic(!level);
    refresh();
}

int SourcePreview::level() const
{
    return m_level->value();
}

void SourcePreview::refresh()
{
    if (m_region.IsEmpty())
        return;
    if (m_level->isAutomatic())
        m_level->showValue(int(m_region.GetAutoThreshold('A', 1)));
    CKestImage source(m_region);
    source.Threshold(level());
    m_picture->setPixmap(enlarged(wrapped(std::as_const(source).view()), previewRoom, devicePixelRatioF()));
    m_facts->setText(tr("%1 x %2, Black %3, White %4")
                         .arg(source.GetWidth())
                         .arg(source.GetHeight())
                         .arg(source.GetGrayLevelCount(0))
                         .arg(source.GetGrayLevelCount(255)));
}

} // namespace ormalux
