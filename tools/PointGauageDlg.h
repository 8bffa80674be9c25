#pragma once

#include "tools/PointGaugeTool.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class PointGauageDlg;
}

/// Finds the edges along a line that the operator draws or types; at first the middle row of the area.
class CPointGauageDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CPointGauageDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CPointGauageDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void resultChosen(int index) override;
    void hideEvent(QHideEvent* event) override;
    void retranslate() override;

private:
    void connectLine();
    void followArea();
    void setLine(POINT from, POINT to);
    void pick();
    void stopPicking();
    void takeLevel(int level);
    void showFound(const CKestImage& picture);
    void draw();
    QString verdict() const;

    std::unique_ptr<Ui::PointGauageDlg> m_ui;
    ormalux::PointGaugeTool m_tool;
    ormalux::PointGaugeTool::Found m_found;
    bool m_ofArea = true; ///< the line is the area's middle row
    bool m_picking = false;
    int m_chosen = -1;
};
