#pragma once

#include "tools/HistogramTool.h"

#include <QWidget>

#include <vector>

namespace ormalux {

class WidgetCanvas;
struct PlotFrame;

/// A curve of counts; gray is filled, the channels are lines in their colours.
struct LevelCurve
{
    enum Kind
    {
        Gray,
        Red,
        Green,
        Blue
    } kind;
    LevelCounts counts;
};

/// Plots how many pixels each level has, with two lines that mark a range of levels. The lines are dragged
/// with the mouse, or moved with the arrow, page, Home and End keys; the up and down keys choose the line.
class HistogramPlot : public QWidget
{
    Q_OBJECT

public:
    explicit HistogramPlot(QWidget* parent = nullptr);

    void setCurves(std::vector<LevelCurve> curves);
    void setLogarithmic(bool logarithmic);
    /// Puts the lines there, in order and within 0 to 255; tells nobody.
    void setLines(int low, int high);
    int low() const { return m_lines[0]; }
    int high() const { return m_lines[1]; }
    /// The level that a result in the list stands for; -1 for none.
    void setMarked(int level);
    /// The middle of a level's column, in this widget's coordinates.
    double placeOf(int level) const;

    QSize sizeHint() const override { return {520, 260}; }

Q_SIGNALS:
    void linesMoved(int low, int high);
    /// The mouse is over a level; -1: over none.
    void levelPointed(int level);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent*) override { update(); }
    void focusOutEvent(QFocusEvent*) override { update(); }

private:
    QRectF plotRect() const;
    int levelAt(double x) const;
    int lineNear(double x) const;
    void moveLine(int line, int level);
    void point(int level);
    long peak() const;
    double shareOf(double count) const;

    void drawCounts(WidgetCanvas& canvas, const PlotFrame& frame) const;
    void drawLevels(WidgetCanvas& canvas, const PlotFrame& frame) const;
    void drawCurve(WidgetCanvas& canvas, const PlotFrame& frame, const LevelCurve& curve) const;
    void drawLines(WidgetCanvas& canvas, const PlotFrame& frame) const;

    std::vector<LevelCurve> m_curves;
    bool m_logarithmic = false;
    int m_lines[2] = {64, 192};
    int m_active = 0;   ///< the line that the keys move
    int m_dragged = -1; ///< the line that the mouse moves
    int m_pointed = -1;
    int m_marked = -1;
};

} // namespace ormalux
