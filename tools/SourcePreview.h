#pragma once

#include "image/VisionImage.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace ormalux {

class ThresholdGroup;

/// What a region becomes as a match source: its level, automatic or chosen, the region in black and white
/// (`preview`) and its size and counts (`facts`).
class SourcePreview : public QWidget
{
    Q_OBJECT

public:
    explicit SourcePreview(QWidget* parent = nullptr);

    /// Takes a copy; the level is automatic unless one is given.
    void setRegion(const CKestImage& region, std::optional<int> level);
    int level() const;

private:
    void refresh();

    CKestImage m_region;
    ThresholdGroup* m_level;
    QLabel* m_picture;
    QLabel* m_facts;
};

/// Pixels as large as whole steps, or whole fractions, of them make them fit; black and white stay so.
QPixmap enlarged(const QImage& image, const QSize& room, qreal ratio);

} // namespace ormalux
