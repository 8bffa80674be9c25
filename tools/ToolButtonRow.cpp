#include "tools/ToolButtonRow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace ormalux {

namespace {

constexpr int momentMs = 80; ///< work that ends sooner shows no bar

}

ToolButtonRow::ToolButtonRow(QWidget* parent)
    : QWidget(parent), m_message(new QLabel(this)), m_busy(new QWidget(this)), m_busySoon(new QTimer(this))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_message->setObjectName(QStringLiteral("message"));
    m_message->setWordWrap(true);
    m_message->hide();
    column->addWidget(m_message);

    auto* const busyRow = new QHBoxLayout(m_busy);
    busyRow->setContentsMargins(0, 0, 0, 0);
    auto* const bar = new QProgressBar(m_busy);
    bar->setObjectName(QStringLiteral("progress"));
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setMaximumHeight(bar->fontMetrics().height());
    busyRow->addWidget(bar);
    auto* const cancel = new QPushButton(tr("취소"), m_busy);
    cancel->setObjectName(QStringLiteral("cancel"));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &ToolButtonRow::cancelAsked);
    busyRow->addWidget(cancel);
    column->addWidget(m_busy);
    m_busy->hide();
    m_busySoon->setSingleShot(true);
    m_busySoon->setInterval(momentMs);
    connect(m_busySoon, &QTimer::timeout, m_busy, &QWidget::show);

    column->addLayout(new QHBoxLayout);
    add("scriptToClipboard", tr("Script to Clipboard"), &ToolButtonRow::scriptAsked);
    add("programToClipboard", tr("Program to Clipboard"), &ToolButtonRow::programAsked);
    add("addToRecipe", tr("Add to Recipe ..."), &ToolButtonRow::recipeAsked);
    static_cast<QBoxLayout*>(column->itemAt(2)->layout())->addStretch();
    m_apply = add("apply", tr("적용"), &ToolButtonRow::applyAsked);
    m_apply->hide();
    add("close", tr("닫기"), &ToolButtonRow::closeAsked);
}

QPushButton* ToolButtonRow::add(const char* name, const QString& text, void (ToolButtonRow::*asked)())
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false); // Enter in a number's field belongs to the number
    connect(button, &QPushButton::clicked, this, asked);
    layout()->itemAt(2)->layout()->addWidget(button);
    return button;
}

bool ToolButtonRow::applies() const
{
    return !m_apply->isHidden();
}

void ToolButtonRow::setApplies(bool applies)
{
    m_apply->setVisible(applies);
    m_apply->setDefault(applies); // Enter applies
}

void ToolButtonRow::setBusy(bool busy)
{
    if (!busy) {
        m_busySoon->stop();
        m_busy->hide();
    } else if (m_busy->isHidden() && !m_busySoon->isActive()) {
        m_busySoon->start();
    }
}

void ToolButtonRow::setMessage(const QString& message)
{
    m_message->setText(message);
    m_message->setVisible(!message.isEmpty());
}

} // namespace ormalux
