#pragma once

#include <QList>
#include <QWidget>

#include <utility>

class QLabel;
class QPushButton;
class QTimer;

namespace ormalux {

/// The foot that all tool dialogs share: `scriptToClipboard`, `programToClipboard`, `addToRecipe`, for tools
/// that change the picture `apply`, and `close`; while a tool works for longer than a moment, a bar and
/// `cancel` in front of them; and a line for messages, `message`.
class ToolButtonRow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool applies READ applies WRITE setApplies)

public:
    explicit ToolButtonRow(QWidget* parent = nullptr);

    bool applies() const;
    void setApplies(bool applies);
    /// Whether the tool's work is still going on.
    void setBusy(bool busy);
    /// Says something under the controls; an empty text takes it away.
    void setMessage(const QString& message);

Q_SIGNALS:
    void scriptAsked();
    void programAsked();
    void recipeAsked();
    void applyAsked();
    void closeAsked();
    void cancelAsked();

protected:
    void changeEvent(QEvent* event) override;

private:
    QPushButton* add(const char* name, const char* text, void (ToolButtonRow::*asked)());
    void retranslate();

    QLabel* m_message;
    QWidget* m_busy;
    QTimer* m_busySoon;
    QPushButton* m_apply;
    QList<std::pair<QPushButton*, const char*>> m_texts; ///< as they are written
};

} // namespace ormalux
