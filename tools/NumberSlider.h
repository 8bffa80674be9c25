#pragma once

#include <QDoubleSpinBox>
#include <QSlider>
#include <QSpinBox>
#include <QWidget>

namespace ormalux {

/// A slider with its number beside it, of which either moves the other, and the ends of its range below. The
/// number is a field with a spin button that carries the widget's own name ("brightness"), the slider that
/// name and "Slider". A double click on the slider goes back to the initial value.
class IntegerSlider : public QWidget
{
    Q_OBJECT

public:
    explicit IntegerSlider(QWidget* parent = nullptr);

    /// To be called once after the widget has its name.
    void setUp(int low, int high, int initial);
    int value() const { return m_number->value(); }
    void setValue(int value) { m_number->setValue(value); }
    QSpinBox* number() const { return m_number; }
    QSlider* slider() const { return m_slider; }

Q_SIGNALS:
    void valueChanged(int value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSlider* m_slider;
    QSpinBox* m_number;
    int m_initial = 0;
};

/// The same for numbers with a fraction.
class RealSlider : public QWidget
{
    Q_OBJECT

public:
    explicit RealSlider(QWidget* parent = nullptr);

    void setUp(double low, double high, int decimals, double initial);
    double value() const { return m_number->value(); }
    void setValue(double value) { m_number->setValue(value); }
    QDoubleSpinBox* number() const { return m_number; }
    QSlider* slider() const { return m_slider; }

Q_SIGNALS:
    void valueChanged(double value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSlider* m_slider;
    QDoubleSpinBox* m_number;
    double m_initial = 0;
    double m_scale = 1; ///< slider steps in a unit
};

} // namespace ormalux
