// Draws every tool dialog with what it finds on a picture of the sample board, one picture each, a sheet of
// them all, and the image window: `ormalux-draw-tools board.png folder [ko|en] [light|dark]`.

#include "demo/Operator.h"
#include "image/VisionImage.h"
#include "tools/PatternEditDlg.h"
#include "tools/SourceFile.h"
#include "view/ImageView.h"
#include "view/ImageViewWnd.h"
#include "view/Language.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTableWidget>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <vector>

namespace {

using namespace operating;

QPalette darkPalette()
{
    QPalette palette(QColor(45, 45, 48));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
    palette.setColor(QPalette::Highlight, QColor(42, 110, 180));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    return palette;
}

/// With the most frequent colours alone, to be small.
QImage inFewColors(const QImage& picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    std::vector<std::pair<int, QRgb>> ranked;
    for (const auto& [color, count] : counts)
        ranked.push_back({count * (1 + QColor(color).saturation()), color}); // marks are few and colourful
    std::sort(ranked.rbegin(), ranked.rend());
    QList<QRgb> table;
    for (std::size_t i = 0; i < std::min<std::size_t>(ranked.size(), 256); ++i)
        table.push_back(ranked[i].second);
    return picture.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither);
}

class Sheet
{
public:
    Sheet(const char* board, const QString& folder) : m_board(board), m_folder(folder)
    {
        m_window.resize(760, 560);
        m_window.show();
        m_view = m_window.findChild<CKestView*>();
        load();
        const QImage picture = QImage(board).convertToFormat(QImage::Format_RGB32);
        m_gray = CKestImage(picture.width(), picture.height());
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                m_gray.SetPixel(x, y, std::uint8_t((qRed(pixel) + qGreen(pixel) + qBlue(pixel)) / 3));
            }
    }
    void run()
    {
        writeSources();
        drawWindow();
        load();
        const CRect labels(500, 471, 750, 553), lids(60, 205, 320, 290), chip(380, 195, 572, 374);
        tool(6601, "CBlobDlg", labels, [](QDialog* dialog) {
            find<QRadioButton>(dialog, "objectBlack")->setChecked(true);
            find<QSpinBox>(dialog, "minHeight")->setValue(8);
            find<QSpinBox>(dialog, "maxHeight")->setValue(40);
        });
        tool(6602, "CHistogramDlg", chip);
        tool(6603, "CThresholdDlg", lids);
        tool(6604, "CDoubleThresholdDlg", lids);
        tool(6610, "CRotateDlg", chip);
        tool(6633, "CUserFilterDlg", chip, [](QDialog* dialog) {
            auto* const preset = find<QComboBox>(dialog, "preset");
            preset->setCurrentIndex(4);
            Q_EMIT preset->activated(4);
        });
        tool(6701, "CGammaDlg", chip);
        tool(6702, "CLightenDlg", chip);
        tool(6709, "CPointGauageDlg", lids);
        tool(6710, "CLineGauageDlg", CRect(495, 480, 520, 540));
        tool(6711, "COcrMatchDlg", CRect(505, 508, 745, 550), [this](QDialog* dialog) {
            addSources(dialog, {"L.ocs", "O.ocs", "T.ocs", "7.ocs", "0.ocs", "3.ocs", "5.ocs", "9.ocs",
                                "1.ocs", "6.ocs"});
            find<QSpinBox>(dialog, "minHeight")->setValue(8);
        });
        tool(6712, "CMatchDlg", lids, [this](QDialog* dialog) { addSources(dialog, {"lid.mcs"}); });
        source(3303, "COcrSrcDlg", CRect(606, 519, 620, 541));
        source(3304, "CMatchSrcDlg", CRect(92, 232, 124, 264));
        editor();
        drawSheet();
    }

private:
    void load()
    {
        if (!m_window.LoadImageGdip(m_board))
            qFatal("%s cannot be read", m_board);
        settle();
        m_window.ZoomFitTo();
    }
    QString file(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QImage& picture)
    {
        if (!picture.save(file(name), "PNG", 0))
            qFatal("%s cannot be written", qPrintable(name));
    }
    void draw(const QString& name, QWidget* dialog)
    {
        settle();
        QImage& drawn = m_drawn[name];
        drawn = dialog->grab().toImage().convertToFormat(QImage::Format_RGB32);
        drawn.setDevicePixelRatio(1);
        write(name + ".png", inFewColors(drawn));
    }
    void region(const CRect& box)
    {
        m_window.SetTrackerMode(1);
        m_window.SetTrackerPosition(box);
        settle(50);
    }
    /// Writes a part of the picture's gray form as a source.
    void cut(const CRect& box, std::uint8_t key, const QString& name)
    {
        CKestImage part(box.right - box.left + 1, box.bottom - box.top + 1);
        for (int y = 0; y < part.GetHeight(); ++y)
            for (int x = 0; x < part.GetWidth(); ++x)
                part.SetPixel(x, y, m_gray.GetPixel(box.left + x, box.top + y));
        if (!ormalux::writeSource(file(name).toStdString(), part, part.GetAutoThreshold('A', 1), key))
            qFatal("%s cannot be written", qPrintable(name));
    }
    /// One of the lids, and the characters of the label's lower line.
    void writeSources()
    {
        cut({92, 232, 124, 264}, 255, "lid.mcs");
        CBlobRectArray blobs;
        m_gray.GetBlobList(505, 512, 746, 546, 128, 0, 2, 40, 10, 40, blobs);
        blobs.SortLeft();
        const char* const text = "LOT7035916";
        for (int i = 0; i < blobs.GetCount() && text[i]; ++i)
            cut(CRect(blobs[i].left, blobs[i].top, blobs[i].right, blobs[i].bottom), std::uint8_t(text[i]),
                QString(QLatin1Char(text[i])) + ".ocs");
    }
    void drawWindow()
    {
        m_window.SetImage(m_gray);
        region(CRect(380, 195, 572, 374));
        find<QWidget>(&m_window, "command_5503")->setFocus(Qt::TabFocusReason);
        settle(1500);
        write("window.png", inFewColors(m_window.grab().toImage().convertToFormat(QImage::Format_RGB32)));
    }
    void tool(int command, const char* name, const CRect& box,
              const std::function<void(QDialog*)>& prepare = nullptr)
    {
        region(box);
        m_view->OpenTool(command);
        settle();
        auto* const dialog = find<QDialog>(&m_window, name);
        if (prepare)
            prepare(dialog);
        settle(600);
        draw(name, dialog);
        write(QString(name) + "-window.png", m_window.grab().toImage().convertToFormat(QImage::Format_RGB32));
        dialog->close();
    }
    void addSources(QDialog* dialog, const QStringList& names)
    {
        QStringList files;
        for (const QString& name : names)
            files += file(name);
        click(dialog, "addSource");
        auto* const chooser = dialog->findChild<QFileDialog*>();
        if (!chooser)
            qFatal("no file is asked for");
        if (files.size() == 1)
            Q_EMIT chooser->fileSelected(files.front());
        else
            Q_EMIT chooser->filesSelected(files);
        chooser->close();
        settle();
    }
    /// The dialogs that save the region as a source.
    void source(int command, const char* name, const CRect& box)
    {
        region(box);
        m_view->SendCommand(command);
        settle();
        auto* const dialog = find<QDialog>(&m_window, name);
        if (auto* const white = dialog->findChild<QRadioButton*>("whiteObject"))
            white->setChecked(true);
        draw(name, dialog);
        dialog->reject();
        settle();
    }
    void editor()
    {
        m_view->OpenTool(6712);
        auto* const match = find<QDialog>(&m_window, "CMatchDlg");
        find<QTableWidget>(match, "sources")->selectRow(0);
        click(match, "editPattern");
        auto* const editor = m_window.findChild<CPatternEditDlg*>();
        if (!editor)
            qFatal("there is no editor");
        draw("CPatternEditDlg", editor);
        editor->close();
        match->close();
    }
    /// The tools side by side.
    void drawSheet()
    {
        const std::vector<const char*> columns[] = {
            {"CBlobDlg", "CHistogramDlg", "CGammaDlg"},
            {"CThresholdDlg", "CDoubleThresholdDlg", "CRotateDlg", "CLightenDlg", "CUserFilterDlg"},
            {"CPointGauageDlg", "CLineGauageDlg"},
            {"COcrMatchDlg", "CMatchDlg"}};
        constexpr int gap = 12;
        std::vector<std::pair<QPoint, QImage>> placed;
        int left = gap, bottom = 0;
        for (const auto& column : columns) {
            int top = gap, width = 0;
            for (const char* const name : column) {
                const QImage& dialog = m_drawn[name];
                placed.push_back({{left, top}, dialog});
                top += dialog.height() + gap;
                width = std::max(width, dialog.width());
            }
            left += width + gap;
            bottom = std::max(bottom, top);
        }
        QImage sheet(left, bottom, QImage::Format_RGB32);
        sheet.fill(QColor(128, 128, 128));
        QPainter painter(&sheet);
        for (const auto& [at, dialog] : placed)
            painter.drawImage(at, dialog);
        painter.end();
        write("tools.png", inFewColors(sheet));
    }

    const char* m_board;
    QDir m_folder;
    CKestImage m_gray;
    CKestWnd m_window;
    CKestView* m_view;
    std::map<QString, QImage> m_drawn;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: ormalux-draw-tools BOARD.png FOLDER [ko|en] [light|dark]\n");
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("NanumGothic"), 10));
    if (argc > 4 && QByteArray(argv[4]) == "dark")
        QApplication::setPalette(darkPalette());
    if (argc > 3)
        CKestLanguage::Set(argv[3]);
    QDir().mkpath(QString::fromLocal8Bit(argv[2]));
    Sheet(argv[1], QString::fromLocal8Bit(argv[2])).run();
    return 0;
}
