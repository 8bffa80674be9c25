#include "app/AboutBox.h"
#include "app/MainWindow.h"
#include "app/PictureFile.h"
#include "app/RegionDlg.h"
#include "view/ImageViewWnd.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStatusBar>

namespace ormalux::viewer {

void MainWindow::open()
{
    const QStringList files = QFileDialog::getOpenFileNames(
        this, tr("그림 파일 열기"), m_preferences.folder,
        tr("그림 파일") + QStringLiteral(" (*.bmp *.png *.jpg *.jpeg *.tif *.tiff);;") + tr("모든 파일") +
            QStringLiteral(" (*)"));
    if (!files.isEmpty())
        openFiles(files);
}

void MainWindow::openResults()
{
    const QString file = QFileDialog::getOpenFileName(
        this, tr("결과 파일 열기"), m_preferences.folder,
        tr("결과 파일") + QStringLiteral(" (*.json *.jsonl);;") + tr("모든 파일") + QStringLiteral(" (*)"));
    if (!file.isEmpty())
        openResultsFile(file);
}

void MainWindow::reload()
{
    QStringList failures;
    if (showFile(m_files[m_index], failures))
        shown(m_files[m_index]);
    else
        report(failures.first());
}

QString MainWindow::askWhereToSave(const QString& title, const QString& suffix, const QString& addition)
{
    const QFileInfo present(m_files.value(m_index));
    const QString name = (m_index < 0 ? tr("그림") : present.completeBaseName()) + addition + u'.' + suffix;
    QFileDialog dialog(this, title, QFileInfo(m_preferences.folder + u'/' + name).path());
    dialog.setObjectName(QStringLiteral("saveDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    QStringList filters{QStringLiteral("BMP (*.bmp)"), QStringLiteral("PNG (*.png)"),
                        QStringLiteral("JPEG (*.jpg *.jpeg)"), QStringLiteral("TIFF (*.tif *.tiff)")};
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(suffix == QLatin1String("bmp") ? filters[0] : filters[1]);
    dialog.selectFile(name);
    // A kind chosen from the list names the file that has none.
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.section(QStringLiteral("*."), 1, 1).section(u' ', 0, 0).remove(u')'));
    });
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void MainWindow::save()
{
    const QString file = askWhereToSave(tr("그림 파일 저장"), QStringLiteral("bmp"), {});
    QString why;
    if (!file.isEmpty() && !savePicture(*m_window, file, &why))
        report(why);
}

void MainWindow::saveAsked(const QImage& image, const QString& title, const QString& addition)
{
    const QString file = askWhereToSave(title, QStringLiteral("png"), addition);
    QString why;
    if (!file.isEmpty() && !saveImage(image, file, &why))
        report(why);
}

void MainWindow::saveWithOverlays()
{
    saveAsked(pictureWithOverlays(*m_window), tr("오버레이와 함께 저장"), tr("-오버레이"));
}

void MainWindow::saveAsSeen()
{
    saveAsked(screenOf(*m_window), tr("보이는 대로 저장"), tr("-화면"));
}

/// The whole picture, with the overlays when they can be seen.
void MainWindow::copyPicture()
{
    const bool overlays = m_window->GetView()->IsOverlayVisible() == 1;
    QGuiApplication::clipboard()->setImage(overlays ? pictureWithOverlays(*m_window) : pictureOf(*m_window));
    statusBar()->showMessage(tr("그림을 복사했습니다."), 3000);
}

void MainWindow::copyAsSeen()
{
    QGuiApplication::clipboard()->setImage(screenOf(*m_window));
    statusBar()->showMessage(tr("화면을 복사했습니다."), 3000);
}

/// The window's own way keeps the picture's size and loses its corners.
void MainWindow::turn(int quarters)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool turned = turnPicture(*m_window, quarters);
    QGuiApplication::restoreOverrideCursor();
    m_window->ImageUpdate();
    if (!turned)
        report(tr("그림을 돌릴 메모리가 부족합니다."));
}

void MainWindow::previous()
{
    page(-1);
}

void MainWindow::next()
{
    page(1);
}

void MainWindow::toggleToolBar()
{
    m_preferences.toolBar = !m_preferences.toolBar;
    m_window->ViewToolBar(m_preferences.toolBar);
}

void MainWindow::toggleStatusBar()
{
    m_preferences.statusBar = !m_preferences.statusBar;
    statusBar()->setVisible(m_preferences.statusBar);
}

void MainWindow::clearOverlays()
{
    m_results = {};
    m_window->RemoveAllGraphics();
    m_window->ImageUpdate();
}

void MainWindow::enterRegion()
{
    RegionDlg(*m_window, this).exec();
}

/// As the command line takes it.
void MainWindow::copyRegion()
{
    const CRect r = m_window->GetTrackerRect();
    const QString text = QStringLiteral("%1,%2,%3,%4").arg(r.left).arg(r.top).arg(r.right).arg(r.bottom);
    QGuiApplication::clipboard()->setText(text);
    statusBar()->showMessage(tr("복사했습니다: %1").arg(text), 3000);
}

void MainWindow::about()
{
    AboutBox(this).exec();
}

} // namespace ormalux::viewer
