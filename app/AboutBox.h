#pragma once

#include <QMessageBox>

namespace ormalux::viewer {

/// Tells the versions of Ormalux and of the toolkit, and what the machine offers. Its text can be selected.
class AboutBox : public QMessageBox
{
    Q_OBJECT

public:
    explicit AboutBox(QWidget* parent);
};

} // namespace ormalux::viewer
