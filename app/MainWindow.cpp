#include "app/MainWindow.h"

#include "app/PictureFile.h"
#include "app/StatusLine.h"
#include "app/Texts.h"
#include "app/Theme.h"
#include "view/ImageViewWnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>

namespace ormalux::viewer {

namespace {

const QStringList pictureNames{"*.bmp", "*.png", "*.jpg", "*.jpeg", "*.tif", "*.tiff"};

bool holdsResults(const QString& file)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    return suffix == QLatin1String("json") || suffix == QLatin1String("jsonl");
}

/// The files, with folders replaced by the pictures in them.
QStringList expanded(const QStringList& files)
{
    QStringList all;
    for (const QString& file : files) {
        if (!QFileInfo(file).isDir()) {
            all << QFileInfo(file).absoluteFilePath();
            continue;
        }
        const QDir folder(file);
        const QStringList inside = folder.entryList(pictureNames, QDir::Files, QDir::Name | QDir::IgnoreCase);
        for (const QString& name : inside)
            all << folder.absoluteFilePath(name);
        if (inside.isEmpty())
            all << folder.absolutePath();
    }
    return all;
}

QStringList localFiles(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

} // namespace

MainWindow::MainWindow(Preferences preferences)
    : m_preferences(std::move(preferences)), m_window(new CKestWnd(this)), m_status(nullptr)
{
    setObjectName(QStringLiteral("MainWindow"));
    setAcceptDrops(true);
    setCentralWidget(m_window);
    m_status = new StatusLine(*statusBar(), *m_window);
    buildMenus();
    m_window->ViewToolBar(m_preferences.toolBar);
    statusBar()->setVisible(m_preferences.statusBar);
    m_report = [this](const QString& message) {
        auto* const box =
            new QMessageBox(QMessageBox::Warning, QStringLiteral("Ormalux"), message, QMessageBox::Ok, this);
        box->setObjectName(QStringLiteral("message"));
        box->setTextFormat(Qt::PlainText);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    };

    CKestView* const view = m_window->GetView();
    connect(view, &CKestView::imageChanged, this, &MainWindow::updateActions);
    connect(view, &CKestView::trackerChanged, this, &MainWindow::updateActions);
    connect(view, &CKestView::trackerConfirmed, this, [this](int left, int top, int right, int bottom) {
        statusBar()->showMessage(
            tr("ROI를 확정했습니다: %1, %2 - %3, %4").arg(left).arg(top).arg(right).arg(bottom), 5000);
    });
    connect(m_window, &CKestWnd::commandSent, this, &MainWindow::updateActions);
    m_window->SetCommandHandler([this](int command) { return runOwn(command); });
    view->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            applyTheme(m_preferences.theme);
    });
    resize(1280, 800);
    restoreGeometry(m_preferences.geometry);
    setTheme(m_preferences.theme);
    chooseLanguage(m_preferences.language);
    retranslate();
    shown({});
    m_window->setFocus(); // keys belong to the picture, not to the first button
}

MainWindow::~MainWindow() = default;

bool MainWindow::openFiles(const QStringList& files)
{
    QStringList pictures, failures;
    bool well = true;
    for (const QString& file : expanded(files)) {
        if (holdsResults(file))
            well = openResultsFile(file) && well;
        else
            pictures << file;
    }
    for (int i = 0; i < pictures.size(); ++i) {
        if (!showFile(pictures[i], failures))
            continue;
        m_files = pictures.mid(i);
        m_index = 0;
        shown(m_files.first());
        break;
    }
    if (!failures.isEmpty())
        report(failures.mid(0, 4).join(QStringLiteral("\n\n")));
    return well && failures.isEmpty();
}

bool MainWindow::showFile(const QString& file, QStringList& failures)
{
    QString why;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    PictureOrigin origin;
    const bool read = openPicture(*m_window, file, &why, &origin);
    QApplication::restoreOverrideCursor();
    if (read)
        m_status->setFileBits(origin.bits, origin.usedBits);
    if (!read) {
        failures << why;
        m_preferences.recent.removeAll(file);
    }
    return read;
}

/// What goes with a picture that is shown now.
void MainWindow::shown(const QString& file)
{
    if (!file.isEmpty()) {
        m_preferences.folder = QFileInfo(file).absolutePath();
        m_preferences.addRecent(file);
    }
    const QString name = QFileInfo(file).fileName();
    setWindowTitle(name.isEmpty() ? QStringLiteral("Ormalux") : name + QStringLiteral(" - Ormalux"));
    m_status->setPage(m_index, int(m_files.size()));
    if (!m_results.empty())
        m_results.draw(*m_window, file);
    updateActions();
}

/// Shows the next file in the direction that can be read; the others leave the list.
void MainWindow::page(int step)
{
    QStringList failures;
    while (m_files.size() > 1) {
        const int index = int((m_index + step + m_files.size()) % m_files.size());
        if (showFile(m_files[index], failures)) {
            m_index = index;
            shown(m_files[index]);
            break;
        }
        m_files.removeAt(index);
        if (index < m_index || (step > 0 && index == m_index))
            --m_index;
    }
    if (!failures.isEmpty()) {
        m_status->setPage(m_index, int(m_files.size()));
        updateActions();
        report(failures.mid(0, 4).join(QStringLiteral("\n\n")));
    }
}

bool MainWindow::openResultsFile(const QString& file)
{
    QString why;
    if (!m_results.read(file, &why)) {
        report(why);
        return false;
    }
    const int drawn = m_results.draw(*m_window, m_files.value(m_index));
    statusBar()->showMessage(tr("결과 %1개를 그렸습니다.").arg(drawn), 5000);
    return true;
}

bool MainWindow::setRegion(const CRect& region)
{
    if (region.right >= m_window->GetWidth() || region.bottom >= m_window->GetHeight()) {
        report(tr("ROI가 그림 밖으로 나갑니다: %1, %2 - %3, %4")
                   .arg(region.left)
                   .arg(region.top)
                   .arg(region.right)
                   .arg(region.bottom));
        return false;
    }
    m_window->SetTrackerPosition(region);
    m_window->SetTrackerMode(1);
    return true;
}

void MainWindow::setZoom(double factor)
{
    if (factor == 0) {
        m_window->ZoomFitTo();
        return;
    }
    m_window->Zoom100();
    CKestView* const view = m_window->GetView();
    if (factor > 1)
        view->ZoomPlus(float(factor - 1));
    else if (factor < 1)
        view->ZoomMinus(float(1 - factor));
}

void MainWindow::setTheme(const QString& name)
{
    m_preferences.theme = name;
    applyTheme(name);
    updateActions();
}

void MainWindow::setLanguage(const QString& code)
{
    m_preferences.language = code;
    m_preferences.languageChosen = true;
    chooseLanguage(code);
    updateActions();
}

void MainWindow::report(const QString& message)
{
    m_report(message);
}

/// The view claims the arrow keys for its region; with Ctrl they page.
bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride ||
        !(static_cast<QKeyEvent*>(event)->modifiers() & Qt::ControlModifier))
        return QMainWindow::eventFilter(watched, event);
    event->ignore();
    return true;
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    m_preferences.geometry = saveGeometry();
    m_preferences.write();
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    openFiles(localFiles(*event->mimeData()));
}

} // namespace ormalux::viewer
