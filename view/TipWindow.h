#pragma once

#include <QWidget>

/// The small window that explains the button under the mouse or with the keyboard's focus: a text and, dimmed
/// behind it, the keys that do the same. It never takes the focus nor the mouse.
class CTipWnd : public QWidget
{
    Q_OBJECT

public:
    explicit CTipWnd(QWidget* owner);

    /// Shows the text below the anchor, or above it where the screen ends.
    void ShowTip(const QWidget& anchor, const QString& text, const QString& keys);
    /// Hides what was shown for the anchor; what was shown for another stays.
    void HideTip(const QWidget& anchor);
    QString GetText() const { return m_text; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect place(const QWidget& anchor) const;

    QString m_text;
    QString m_keys;
    const QWidget* m_anchor = nullptr; ///< compared only
};
