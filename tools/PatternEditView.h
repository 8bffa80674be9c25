#pragma once

#include "tools/PatternTemplate.h"

#include <QAbstractScrollArea>
#include <QPoint>

namespace ormalux {
class WidgetCanvas;
}

/// Shows a match source as a grid of cells, scrolling, and lets the operator paint it: the left button paints
/// black, the right one white, a drag without gaps. From the keyboard the arrows, Home, End and the page keys
/// move a frame (with Shift painting black, with Ctrl painting white on their way), Space and B paint its
/// cell black, W white. Every stroke can be taken back.
class CPatternEditView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit CPatternEditView(QWidget* parent = nullptr);

    /// Shows a file's template, an empty one unless that is done.
    ormalux::PatternRead load(const QString& path);
    const ormalux::PatternTemplate& pattern() const { return m_history.current(); }
    /// Whether there is something to save since it was loaded or marked as saved.
    bool isModified() const { return !(pattern() == m_saved); }
    void markSaved() { m_saved = pattern(); }

    // Each is a step of its own.

    void setKey(std::uint8_t key);
    void flipLeftRight();
    void flipUpDown();
    /// False, with nothing changed, for what is no size and when memory is short.
    bool resizePattern(int width, int height);

    void undo();
    void redo();
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }

    static constexpr int cellWidth = 15;
    int cellHeight() const { return m_cellHeight; }
    /// The cell that the keyboard paints.
    QPoint cursorCell() const { return m_cursor; }
    /// Where the focus cross stands, (-1, -1) for nowhere.
    QPoint focusCross() const { return m_cross; }

Q_SIGNALS:
    /// The template's key, size or pixels are others, also while a stroke is still going on.
    void patternChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    template <class Change>
    void step(const Change& change);
    void shown();
    void setScrollRange();
    QPoint cellAt(QPoint position) const;
    void paintLine(QPoint from, QPoint to, std::uint8_t value);
    void endStroke();
    void moveCross(QPoint position);
    void moveCursor(QPoint cell);

    void drawCells(ormalux::WidgetCanvas& canvas) const;
    void drawLines(ormalux::WidgetCanvas& canvas) const;
    void drawCursor(ormalux::WidgetCanvas& canvas) const;

    ormalux::PatternHistory m_history;
    ormalux::PatternTemplate m_saved;
    int m_cellHeight = cellWidth;
    QPoint m_cross{-1, -1};
    QPoint m_cursor{0, 0};
    QPoint m_lastCell{0, 0}; ///< where the stroke has come to
    bool m_stroke = false;   ///< a button is held
};
