#pragma once

#include "tools/PointGaugeTool.h"

#include <QWidget>

namespace ormalux {

/// The gray levels along a measuring line, from its first pixel at the left to its last at the right, with
/// the threshold across and a mark at every edge. Under the mouse it tells the pixel and its level; a drag
/// moves the threshold.
class ProfilePlot : public QWidget
{
    Q_OBJECT

public:
    explicit ProfilePlot(QWidget* parent = nullptr);

    /// marks: indices of samples; best: an index of marks or -1. A threshold of 0 is none.
    void setProfile(std::vector<PointGaugeTool::Sample> samples, int threshold, std::vector<int> marks,
                    int best);
    /// Marks the edge that is selected in the list; -1: none.
    void setChosen(int mark);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void thresholdDragged(int level);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QRect plotArea() const;
    int toX(int sample) const;
    int toY(int level) const;
    int sampleAt(int x) const;
    void paintProfile(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;
    void paintReading(QPainter& painter) const;
    void dragTo(int y);

    std::vector<PointGaugeTool::Sample> m_samples;
    std::vector<int> m_marks;
    int m_threshold = 0;
    int m_best = -1;
    int m_chosen = -1;
    int m_hovered = -1; ///< sample under the mouse
};

} // namespace ormalux
