#pragma once

#include <QWidget>

class QCheckBox;

namespace ormalux {

class IntegerSlider;

/// The controls that every tool with a threshold shares: the check box `autoThreshold`, the number
/// `threshold` with its spin button and the slider `thresholdSlider`, 0 to 255. While the box is checked the
/// level is shown but not to be changed.
class ThresholdGroup : public QWidget
{
    Q_OBJECT

public:
    explicit ThresholdGroup(QWidget* parent = nullptr);

    bool isAutomatic() const;
    void setAutomatic(bool automatic);
    int value() const;
    /// Shows a level, which an automatic threshold may have given; tells nobody.
    void showValue(int level);

protected:
    void changeEvent(QEvent* event) override;

Q_SIGNALS:
    /// The operator moved the level or switched between automatic and fixed.
    void changed();

private:
    void keepReadable();

    QCheckBox* m_automatic;
    IntegerSlider* m_level;
};

} // namespace ormalux
