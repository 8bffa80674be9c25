#include "tools/NumberSlider.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <cmath>

namespace ormalux {

namespace {

constexpr int labelledEnds = 8; ///< the slider's share of the width, in columns of the grid

/// Slider and number in a row, the ends of the range under the slider.
void arrange(QWidget* owner, QSlider* slider, QWidget* number, const QString& low, const QString& high)
{
    auto* const grid = new QGridLayout(owner);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(0);
    grid->addWidget(slider, 0, 0, 1, labelledEnds);
    grid->addWidget(number, 0, labelledEnds);
    auto* const lowLabel = new QLabel(low, owner);
    auto* const highLabel = new QLabel(high, owner);
    highLabel->setAlignment(Qt::AlignRight);
    for (QLabel* const label : {lowLabel, highLabel})
        label->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(lowLabel, 1, 0, 1, labelledEnds / 2);
    grid->addWidget(highLabel, 1, labelledEnds / 2, 1, labelledEnds / 2);
    grid->setColumnStretch(0, 1);
    number->setMinimumWidth(
        number->fontMetrics().horizontalAdvance(QStringLiteral("00000000.0"))); // all alike
}

} // namespace

IntegerSlider::IntegerSlider(QWidget* parent)
    : QWidget(parent), m_slider(new QSlider(Qt::Horizontal, this)), m_number(new QSpinBox(this))
{
    m_slider->installEventFilter(this);
    m_number->setAlignment(Qt::AlignRight);
    connect(m_slider, &QSlider::valueChanged, m_number, &QSpinBox::setValue);
    connect(m_number, &QSpinBox::valueChanged, this, [this](int value) {
        const QSignalBlocker quiet(m_slider);
        m_slider->setValue(value);
        Q_EMIT valueChanged(value);
    });
}

void IntegerSlider::setUp(int low, int high, int initial)
{
    const QString name = objectName();
    setObjectName(name + QStringLiteral("Group"));
    m_number->setObjectName(name);
    m_slider->setObjectName(name + QStringLiteral("Slider"));
    m_number->setAccessibleName(accessibleName());
    m_slider->setAccessibleName(accessibleName());
    m_slider->setPageStep(qMax(1, (high - low) / 16));
    const QSignalBlocker quiet(this);
    m_slider->setRange(low, high);
    m_number->setRange(low, high);
    m_initial = initial;
    m_number->setValue(initial);
    arrange(this, m_slider, m_number, QString::number(low), QString::number(high));
}

bool IntegerSlider::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick)
        m_number->setValue(m_initial);
    return QWidget::eventFilter(watched, event);
}

RealSlider::RealSlider(QWidget* parent)
    : QWidget(parent), m_slider(new QSlider(Qt::Horizontal, this)), m_number(new QDoubleSpinBox(this))
{
    m_slider->installEventFilter(this);
    m_number->setAlignment(Qt::AlignRight);
    connect(m_slider, &QSlider::valueChanged, this,
            [this](int steps) { m_number->setValue(steps / m_scale); });
    connect(m_number, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        const QSignalBlocker quiet(m_slider);
        m_slider->setValue(int(std::lround(value * m_scale)));
        Q_EMIT valueChanged(value);
    });
}

void RealSlider::setUp(double low, double high, int decimals, double initial)
{
    const QString name = objectName();
    setObjectName(name + QStringLiteral("Group"));
    m_number->setObjectName(name);
    m_slider->setObjectName(name + QStringLiteral("Slider"));
    m_number->setAccessibleName(accessibleName());
    m_slider->setAccessibleName(accessibleName());
    m_scale = std::pow(10.0, decimals);
    m_number->setDecimals(decimals);
    m_number->setSingleStep(10 / m_scale);
    const QSignalBlocker quiet(this);
    const QSignalBlocker quietSlider(m_slider); // its rounded steps must not reach the number
    m_slider->setRange(int(std::lround(low * m_scale)), int(std::lround(high * m_scale)));
    m_slider->setPageStep(qMax(1, (m_slider->maximum() - m_slider->minimum()) / 16));
    m_number->setRange(low, high);
    m_initial = initial;
    m_number->setValue(initial);
    arrange(this, m_slider, m_number, QString::number(low), QString::number(high));
}

bool RealSlider::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick)
        m_number->setValue(m_initial);
    return QWidget::eventFilter(watched, event);
}

} // namespace ormalux
