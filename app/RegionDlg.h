#pragma once

#include "platform/Types.h"

#include <QDialog>

#include <memory>

class CKestWnd;
class QSpinBox;
namespace Ui {
class RegionDlg;
}

namespace ormalux::viewer {

/// Sets the region of interest by numbers: its corners, both inclusive, or its size. The window shows the
/// region while it is edited; without OK it is as before.
class RegionDlg : public QDialog
{
    Q_OBJECT

public:
    RegionDlg(CKestWnd& window, QWidget* parent);
    ~RegionDlg() override;

private:
    void cornersChanged();
    void sizeChanged();
    CRect region() const;
    void restore();

    CKestWnd& m_window;
    std::unique_ptr<Ui::RegionDlg> m_ui;
    CRect m_before;
    int m_modeBefore;
};

} // namespace ormalux::viewer
