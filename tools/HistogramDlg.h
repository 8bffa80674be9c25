#pragma once

#include "tools/HistogramPlot.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class HistogramDlg;
}

/// Shows how many pixels of the area each level has, and what two levels would take out of the picture.
class CHistogramDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CHistogramDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CHistogramDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void hideEvent(QHideEvent* event) override;
    void retranslate() override;

private:
    void connectControls();
    void count(const CKestImage& picture, const RECT& area);
    void showCurves();
    void showList();
    void showLines();
    void showLevel(int level);
    void chooseLevel(int level);
    void previewMask();
    /// The curves whose boxes are checked.
    std::vector<ormalux::LevelCurve> chosenCurves() const;

    std::unique_ptr<Ui::HistogramDlg> m_ui;
    ormalux::HistogramTool m_tool;
    std::vector<ormalux::LevelCurve> m_curves; ///< gray, and red, green and blue of a colour picture
    std::vector<int> m_levels;                 ///< of the list's results
    std::shared_ptr<const CKestImage> m_picture;
    std::shared_ptr<const CKestImage24> m_colors; ///< of the same picture
};
