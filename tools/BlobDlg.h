#pragma once

#include "tools/BlobTool.h"
#include "tools/SourceFile.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class BlobDlg;
}

/// Lists the connected regions of the area.
class CBlobDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CBlobDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CBlobDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void resultChosen(int index) override;
    void retranslate() override;

private:
    void setUpSizes();
    void addSaving();
    void saveChosen(ormalux::SourceKind kind);
    void showFound(const ormalux::BlobTool::Found& found, ormalux::ResultList list);
    void forget();
    void draw();
    void drawNumbers();
    QString verdict(const ormalux::BlobTool::Found& found) const;

    std::unique_ptr<Ui::BlobDlg> m_ui;
    ormalux::BlobTool m_tool;
    int m_chosen = -1;
};
