#pragma once

#include <QWidget>

namespace ormalux {

struct PatternTemplate;

/// Shows a template as large as fits, in its own proportions.
class PatternPreview : public QWidget
{
    Q_OBJECT

public:
    explicit PatternPreview(QWidget* parent = nullptr);

    /// The template outlives this widget; update() shows it again.
    void setPattern(const PatternTemplate& pattern) { m_pattern = &pattern; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PatternTemplate* m_pattern = nullptr;
};

} // namespace ormalux
