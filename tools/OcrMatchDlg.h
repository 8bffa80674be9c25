#pragma once

#include "tools/OcrMatchTool.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class OcrMatchDlg;
}

/// Reads the characters in the area.
class COcrMatchDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    COcrMatchDlg(ormalux::ToolHost& host, QWidget* parent);
    ~COcrMatchDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void resultChosen(int index) override;
    void retranslate() override;

private:
    void showFound(const ormalux::OcrMatchTool::Found& found);
    QStringList titles() const;
    void clearFound();
    void draw(int chosen);

    std::unique_ptr<Ui::OcrMatchDlg> m_ui;
    ormalux::OcrMatchTool m_tool;
};
