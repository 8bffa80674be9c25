#pragma once

#include "app/Preferences.h"
#include "app/Results.h"
#include "platform/Types.h"

#include <QMainWindow>

#include <functional>
#include <optional>

class CKestWnd;
class QActionGroup;

namespace ormalux::viewer {

struct ActionRow;
struct Menus;
class StatusLine;

/// The viewer's window: one image window with menus, a status bar, drag and drop and the files that the
/// operator pages through.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(Preferences preferences);
    ~MainWindow() override;

    CKestWnd& window() { return *m_window; }

    /// Opens pictures and files of results (.json, .jsonl); of folders their pictures by name. The first
    /// picture that can be read is shown and the list to page through becomes these files; when there is
    /// none, picture and list stay. What cannot be read is reported. Returns whether all was well.
    bool openFiles(const QStringList& files);
    /// Draws results over the picture now and over its siblings as they are shown.
    bool openResultsFile(const QString& file);
    /// False, and reported, when the region leaves the picture.
    bool setRegion(const CRect& region);
    /// 0 is the fit.
    void setZoom(double factor);
    void setTheme(const QString& name);
    void setLanguage(const QString& code);

    /// Takes the place of the message boxes.
    void setReporter(std::function<void(const QString&)> report) { m_report = std::move(report); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    friend struct Menus;

    // Menus (app/MainWindowMenus.cpp)
    void buildMenus();
    void buildChoice(const char* menu, const char* const (*choices)[2], int count,
                     void (MainWindow::*choose)(const QString&));
    void retranslate();
    void updateActions();
    void fillRecent();
    QMenu* menu(const char* name) const;
    void trigger(const ActionRow& row);

    bool runOwn(int command);

    // What the menus do (app/MainWindowActions.cpp)
    void open();
    void openResults();
    void reload();
    void save();
    void saveWithOverlays();
    void saveAsSeen();
    void copyPicture();
    void copyAsSeen();
    void turn(int quarters);
    void previous();
    void next();
    void toggleToolBar();
    void toggleStatusBar();
    void clearOverlays();
    void enterRegion();
    void copyRegion();
    void about();

    bool showFile(const QString& file, QStringList& failures);
    void page(int step);
    void shown(const QString& file);
    void report(const QString& message);
    QString askWhereToSave(const QString& title, const QString& suffix, const QString& addition);
    void saveAsked(const QImage& image, const QString& title, const QString& addition);

    Preferences m_preferences;
    CKestWnd* m_window;
    StatusLine* m_status;
    QList<std::pair<QAction*, const ActionRow*>> m_actions;
    QStringList m_files;
    int m_index = -1;
    Results m_results;
    std::function<void(const QString&)> m_report;
};

} // namespace ormalux::viewer
