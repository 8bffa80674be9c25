#include "tools/ToolButtonRow.h"

#include <QEvent>
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
    busyRow->addWidget(add("cancel", QT_TR_NOOP("취소"), &ToolButtonRow::cancelAsked));
    column->addWidget(m_busy);
    m_busy->hide();
    m_busySoon->setSingleShot(true);
    m_busySoon->setInterval(momentMs);
    connect(m_busySoon, &QTimer::timeout, m_busy, &QWidget::show);

    auto* const row = new QHBoxLayout;
    column->addLayout(row);
    row->addWidget(add("scriptToClipboard", QT_TR_NOOP("Script to Clipboard"), &ToolButtonRow::scriptAsked));
    row->addWidget(
        add("programToClipboard", QT_TR_NOOP("Program to Clipboard"), &ToolButtonRow::programAsked));
    row->addWidget(add("addToRecipe", QT_TR_NOOP("Add to Recipe ..."), &ToolButtonRow::recipeAsked));
    row->addStretch();
    m_apply = add("apply", QT_TR_NOOP("적용"), &ToolButtonRow::applyAsked);
    row->addWidget(m_apply);
    m_apply->hide();
    row->addWidget(add("close", QT_TR_NOOP("닫기"), &ToolButtonRow::closeAsked));
    retranslate();
}

QPushButton* ToolButtonRow::add(const char* name, const char* text, void (ToolButtonRow::*asked)())
{
    auto* const button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, asked);
    m_texts.append({button, text});
    return button;
}

void ToolButtonRow::retranslate()
{
    for (const auto& [button, text] : m_texts)
        button->setText(tr(text));
}

void ToolButtonRow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
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
