#pragma once

#include "image/VisionImage.h"
#include "view/ImageViewWnd.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace testing_support {

/// The commands of the tools and their dialogs.
inline constexpr std::pair<int, const char*> everyTool[] = {
    {6601, "CBlobDlg"},        {6602, "CHistogramDlg"},
    {6603, "CThresholdDlg"},   {6604, "CDoubleThresholdDlg"},
    {6610, "CRotateDlg"},      {6633, "CUserFilterDlg"},
    {6701, "CGammaDlg"},       {6702, "CLightenDlg"},
    {6709, "CPointGauageDlg"}, {6710, "CLineGauageDlg"},
    {6711, "COcrMatchDlg"},    {6712, "CMatchDlg"}};

/// A shown window of 640 x 480 and the dialogs of its tools, as an operator has them.
class ToolFixture : public testing::Test
{
protected:
    ToolFixture()
    {
        window.resize(640, 480);
        window.show();
        QApplication::processEvents();
        view = window.findChild<CKestView*>();
    }

    void show(const CKestImage& picture)
    {
        window.SetImage(const_cast<CKestImage&>(picture));
        window.ZoomFitTo();
        settle();
    }
    void setArea(int left, int top, int right, int bottom)
    {
        window.SetTrackerMode(1);
        window.SetTrackerPosition(CRect(left, top, right, bottom));
        settle();
    }
    /// The dialog of a tool command, open.
    QDialog* open(int command, const char* className)
    {
        view->OpenTool(command);
        settle();
        QDialog* const dialog = window.findChild<QDialog*>(QLatin1String(className));
        EXPECT_TRUE(dialog && dialog->isVisible()) << className;
        return dialog;
    }
    template <class Widget>
    static Widget* control(QWidget* dialog, const char* name)
    {
        Widget* const found = dialog->findChild<Widget*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    static void click(QWidget* dialog, const char* button)
    {
        QTest::mouseClick(control<QWidget>(dialog, button), Qt::LeftButton);
        settle();
    }
    static std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }
    /// Lets timers of no time and queued calls happen.
    static void settle()
    {
        for (int i = 0; i < 4; ++i)
            QApplication::processEvents();
    }
    /// Waits for work in the background; false when it takes longer than some seconds.
    static bool waitFor(const std::function<bool()>& done) { return QTest::qWaitFor(done, 20000); }

    /// The picture as it is, previews not in it.
    std::unique_ptr<CKestImage> picture() { return std::unique_ptr<CKestImage>(window.GetImage()); }
    /// What the view shows.
    QImage seen() { return view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    CKestWnd window;
    CKestView* view = nullptr;
};

} // namespace testing_support
