#include "tools/ThresholdGroup.h"

#include "tools/NumberSlider.h"

#include <QCheckBox>
#include <QEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace ormalux {

ThresholdGroup::ThresholdGroup(QWidget* parent)
    : QWidget(parent), m_automatic(new QCheckBox(tr("Auto Threshold"), this)),
      m_level(new IntegerSlider(this))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_automatic);
    column->addWidget(m_level);
    m_automatic->setObjectName(QStringLiteral("autoThreshold"));
    m_level->setObjectName(QStringLiteral("threshold"));
    m_level->setAccessibleName(tr("Threshold"));
    m_level->setUp(0, 255, 128);
    connect(m_automatic, &QCheckBox::toggled, this, [this](bool automatic) {
        m_level->setEnabled(!automatic);
        Q_EMIT changed();
    });
    connect(m_level, &IntegerSlider::valueChanged, this, &ThresholdGroup::changed);
    keepReadable();
}

/// A level that was found is a reading, though it cannot be changed.
void ThresholdGroup::keepReadable()
{
    QPalette readable;
    // The group's own colours: the number learns of other ones only after the group.
    readable.setColor(QPalette::Disabled, QPalette::Text, palette().color(QPalette::Active, QPalette::Text));
    m_level->number()->setPalette(readable);
}

void ThresholdGroup::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        keepReadable();
}

bool ThresholdGroup::isAutomatic() const
{
    return m_automatic->isChecked();
}

void ThresholdGroup::setAutomatic(bool automatic)
{
    m_automatic->setChecked(automatic);
}

int ThresholdGroup::value() const
{
    return m_level->value();
}

void ThresholdGroup::showValue(int level)
{
    const QSignalBlocker quiet(m_level);
    m_level->setValue(level);
}

} // namespace ormalux
