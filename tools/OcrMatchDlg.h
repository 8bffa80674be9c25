#pragma once

#include "tools/OcrMatchTool.h"
#include "tools/SearchDlg.h"

#include <memory>

namespace Ui {
class OcrMatchDlg;
}

/// Reads the characters in the area.
class COcrMatchDlg : public ormalux::SearchDlg
{
    Q_OBJECT

public:
    COcrMatchDlg(ormalux::ToolHost& host, QWidget* parent);
    ~COcrMatchDlg() override;

protected:
    const ormalux::Tool& read() override;
    int levelOf(const CKestImage& picture, const CRect& area) const override;
    Search search(std::shared_ptr<const CKestImage> picture, const CRect& area) override;
    void clearFound() override;
    void resultChosen(int index) override;
    void retranslate() override;

private:
    void showFound(const ormalux::OcrMatchTool::Found& found);
    QStringList titles() const;
    void draw(int chosen);

    std::unique_ptr<Ui::OcrMatchDlg> m_ui;
    ormalux::OcrMatchTool m_tool;
};
