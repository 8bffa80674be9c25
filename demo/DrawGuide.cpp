// Walks the operator guide's path on a picture of the sample board, through the controls that an operator
// uses, and draws the guide's pictures: `ormalux-draw-guide board.png folder`. Leaves the source lid.mcs, the
// recipe station.json and the script script.txt in the folder, too.

#include "demo/Operator.h"
#include "tools/PatternEditDlg.h"
#include "tools/PatternEditView.h"
#include "view/ImageView.h"
#include "view/ImageViewWnd.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include <cstdio>
#include <memory>

namespace {

using namespace operating;

/// Answers the file dialog that is open.
void choose(QWidget* in, const QString& file)
{
    auto* const files = in->findChild<QFileDialog*>();
    if (!files)
        qFatal("no file is asked for");
    Q_EMIT files->fileSelected(file);
    Q_EMIT files->filesSelected({file});
    files->close();
    settle();
}

/// Paints a line of cells as a drag with a button does.
void drag(CPatternEditView* view, QPoint from, QPoint to, Qt::MouseButton button)
{
    const auto send = [&](QEvent::Type type, QPoint cell, Qt::MouseButton changed, Qt::MouseButtons held) {
        const QPointF at((cell.x() + 0.5) * CPatternEditView::cellWidth,
                         (cell.y() + 0.5) * view->cellHeight());
        QMouseEvent event(type, at, view->viewport()->mapToGlobal(at), changed, held, {});
        QApplication::sendEvent(view->viewport(), &event);
    };
    send(QEvent::MouseButtonPress, from, button, button);
    send(QEvent::MouseMove, to, Qt::NoButton, button);
    send(QEvent::MouseButtonRelease, to, button, {});
    settle();
}

class Walk
{
public:
    Walk(const QString& board, const QString& folder) : m_folder(folder)
    {
        m_window.resize(760, 560);
        m_window.show();
        m_view = m_window.findChild<CKestView*>();
        m_window.LoadImageGdip(board.toUtf8().constData());
        settle();
        m_window.ZoomFitTo();
    }
    void run()
    {
        region(60, 205, 320, 290);
        draw("region.png", &m_window);
        lookAtLevels();
        saveSource();
        QDialog* const match = matchOverARange();
        correct(match);
        draw("again.png", match);
        takeScriptAndRecipe(match);
    }

private:
    QString file(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    /// In few colours, to be small.
    void write(const char* name, const QPixmap& picture) const
    {
        const QImage few = picture.toImage().convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
        if (!few.save(file(name), "PNG", 0))
            qFatal("%s cannot be written", name);
    }
    void draw(const char* name, QWidget* widget)
    {
        settle();
        write(name, widget->grab());
    }
    /// The window with a dialog at its lower right, as they stand on a screen.
    void drawBoth(const char* name, QWidget* dialog)
    {
        settle();
        const QPixmap above = dialog->grab();
        QPixmap both(m_window.width() + above.width() / 2, std::max(m_window.height(), above.height()));
        both.fill(Qt::white);
        QPainter painter(&both);
        painter.drawPixmap(0, 0, m_window.grab());
        const QPoint at(both.width() - above.width(), both.height() - above.height());
        painter.drawPixmap(at, above);
        painter.setPen(Qt::darkGray);
        painter.drawRect(QRect(at, above.size()).adjusted(0, 0, -1, -1));
        painter.end();
        write(name, both);
    }
    void region(int left, int top, int right, int bottom)
    {
        m_window.SetTrackerMode(1);
        m_window.SetTrackerPosition(CRect(left, top, right, bottom));
        settle();
    }
    QDialog* open(int command, const char* name)
    {
        m_view->OpenTool(command);
        settle();
        return find<QDialog>(&m_window, name);
    }
    void lookAtLevels()
    {
        QDialog* const dialog = open(6603, "CThresholdDlg");
        drawBoth("threshold.png", dialog);
        dialog->close();
        QDialog* const levels = open(6602, "CHistogramDlg");
        find<QCheckBox>(levels, "logarithmic")->setChecked(true);
        find<QSpinBox>(levels, "low")->setValue(81);
        find<QSpinBox>(levels, "high")->setValue(255);
        draw("histogram.png", levels);
        levels->close();
    }
    void saveSource()
    {
        region(92, 232, 124, 264);
        m_view->SendCommand(3304);
        settle();
        auto* const source = find<QDialog>(&m_window, "CMatchSrcDlg");
        find<QAbstractButton>(source, "whiteObject")->click();
        draw("source.png", source);
        source->accept();
        settle();
        choose(&m_window, file("lid.mcs"));
        find<QMessageBox>(&m_window, "sourceMessage")->accept();
        settle();
    }
    QDialog* matchOverARange()
    {
        region(60, 205, 320, 290);
        QDialog* const match = open(6712, "CMatchDlg");
        click(match, "addSource");
        choose(match, file("lid.mcs"));
        find<QCheckBox>(match, "thresholdRange")->setChecked(true);
        find<QSpinBox>(match, "above")->setValue(60);
        settle(2000);
        drawBoth("match.png", match);
        return match;
    }
    /// Fills what the scored cross has left in the lid.
    void correct(QDialog* match)
    {
        find<QTableWidget>(match, "sources")->selectRow(0);
        click(match, "editPattern");
        auto* const editor = m_window.findChild<CPatternEditDlg*>();
        CPatternEditView* const view = editor ? editor->view() : nullptr;
        if (!view)
            qFatal("there is no editor");
        draw("editor.png", editor);
        const int middleX = view->pattern().width / 2, middleY = view->pattern().height / 2;
        for (int i = -2; i <= 2; ++i) {
            drag(view, {middleX + i, 4}, {middleX + i, view->pattern().height - 5}, Qt::RightButton);
            drag(view, {4, middleY + i}, {view->pattern().width - 5, middleY + i}, Qt::RightButton);
        }
        draw("corrected.png", editor);
        click(editor, "save");
        settle(2000);
    }
    void takeScriptAndRecipe(QDialog* match)
    {
        click(match, "scriptToClipboard");
        QFile script(file("script.txt"));
        if (script.open(QIODevice::WriteOnly))
            script.write(QApplication::clipboard()->text().toUtf8());
        click(match, "addToRecipe");
        choose(match, file("station.json"));
    }

    QDir m_folder;
    CKestWnd m_window;
    CKestView* m_view;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: ormalux-draw-guide BOARD.png FOLDER\n");
        return 2;
    }
    QApplication::setFont(QFont(QStringLiteral("NanumGothic"), 10));
    Walk(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2])).run();
    return 0;
}
