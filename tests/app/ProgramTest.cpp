#include "tests/app/ViewerFixture.h"

#include <QProcess>

using namespace testing_support;

namespace {

struct Ended
{
    int code;
    QString output;
    QString errors;
};

class ProgramTest : public ViewerFixture
{
protected:
    /// Runs the program itself, without a display and with settings of its own.
    Ended run(const QStringList& arguments, const QString& scale = "1", const QString& locale = "C")
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            environment.remove(name);
        environment.insert("QT_SCALE_FACTOR", scale);
        environment.insert("LC_ALL", locale);
        environment.remove("LANGUAGE");
        environment.insert("XDG_CONFIG_HOME", folder.path());
        process.setProcessEnvironment(environment);
        process.start(ORMALUX_VIEWER, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    QStringList grabbing(const QStringList& more)
    {
        return more + QStringList{"--grab", path("창.png"), "--size", "700x500", "--zoom", "1"};
    }
    QImage grabbed() { return QImage(path("창.png")).convertToFormat(QImage::Format_RGB32); }
    QString filled(const QColor& color)
    {
        QImage picture(200, 100, QImage::Format_RGB888);
        picture.fill(color);
        return saved(picture, "입력.png");
    }
};

/// How many pixels have exactly this colour.
int count(const QImage& image, QRgb color)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == color;
    return found;
}

TEST_F(ProgramTest, GrabRendersTheWindowAtEachScale)
{
    const QString file = filled(QColor(200, 30, 90));
    for (const int scale : {1, 2}) {
        const Ended ended = run(grabbing({file}), QString::number(scale));
        ASSERT_EQ(ended.code, 0) << qPrintable(ended.errors);
        EXPECT_EQ(grabbed().size(), QSize(700, 500) * scale);
        EXPECT_EQ(count(grabbed(), qRgb(200, 30, 90)), 200 * 100 * scale * scale);
    }
}

TEST_F(ProgramTest, WildcardsAreExpandedWhereTheShellDoesNot)
{
    filled(QColor(200, 30, 90));
    const Ended ended = run(grabbing({path("입*.pn?")}));
#ifdef Q_OS_WIN
    EXPECT_EQ(ended.code, 0) << qPrintable(ended.errors);
    EXPECT_EQ(count(grabbed(), qRgb(200, 30, 90)), 200 * 100);
#else
    EXPECT_EQ(ended.code, 2) << "the name is taken as it stands";
#endif
}

TEST_F(ProgramTest, GrabDrawsResultsInTheChosenColors)
{
    const QString file = filled(Qt::black);
    const QString results =
        written(R"({"file":"입력.png","parts":[{"left":20,"top":30,"right":59,"bottom":69}]})", "r.json");
    ASSERT_EQ(run(grabbing({file, "--overlays", results, "--theme", "light"})).code, 0);
    const QImage light = grabbed();
    EXPECT_EQ(count(light, qRgb(255, 230, 0)), 4 * 42) << "the outline of the box around the part";
    ASSERT_EQ(run(grabbing({file, "--theme", "dark", "--roi", "10,10,90,80"})).code, 0);
    const QImage dark = grabbed();
    EXPECT_GT(qGray(light.pixel(690, 5)), 200);
    EXPECT_LT(qGray(dark.pixel(690, 5)), 80);
    EXPECT_EQ(count(dark, qRgb(255, 230, 0)), 0);
}

TEST_F(ProgramTest, BadInputEndsWithTwoAMessageAndNoFile)
{
    const QString good = filled(Qt::red);
    const std::pair<QStringList, QString> cases[] = {
        {{path("nowhere.png")}, "nowhere.png"},
        {{good, "--overlays", path("nowhere.json")}, "nowhere.json"},
        {{good, "--roi", "10,10,200,30"}, "10, 10 - 200, 30"},
        {{good, "--roi", "10,10,20"}, "--roi"},
        {{good, "--size", "0x9"}, "--size"},
        {{good, "--size", "99999x9"}, "--size"},
        {{good, "--zoom", "26"}, "--zoom"},
        {{good, "--zoom", "nan"}, "--zoom"},
        {{good, "--lang", "xx"}, "--lang"},
        {{good, "--theme", "pink"}, "--theme"},
        {{good, "--no-such"}, "--no-such"},
    };
    for (const auto& [arguments, word] : cases) {
        const Ended ended = run(arguments + QStringList{"--grab", path("창.png")});
        EXPECT_EQ(ended.code, 2) << qPrintable(word);
        EXPECT_TRUE(ended.errors.contains(word)) << qPrintable(ended.errors);
        EXPECT_TRUE(ended.output.isEmpty());
        EXPECT_FALSE(QFile::exists(path("창.png"))) << qPrintable(word);
    }
    const Ended nowhere = run({good, "--grab", path("no folder/out.png")});
    EXPECT_EQ(nowhere.code, 2);
    EXPECT_TRUE(nowhere.errors.contains("out.png"));
}

#ifdef Q_OS_UNIX
TEST_F(ProgramTest, TheDesktopsLanguageIsTheFirst)
{
    const QStringList missing{path("nowhere.png"), "--grab", path("창.png")};
    EXPECT_TRUE(run(missing, "1", "en_US.UTF-8").errors.contains("was not found"));
    EXPECT_TRUE(run(missing, "1", "fr_FR.UTF-8").errors.contains("was not found"));
    EXPECT_TRUE(run(missing, "1", "ko_KR.UTF-8").errors.contains("찾을 수 없습니다"));
    EXPECT_TRUE(run(missing + QStringList{"--lang", "ko"}, "1", "en_US.UTF-8").errors.contains("찾을 수"));
}
#endif

TEST_F(ProgramTest, HelpAndVersionNeedNoDisplay)
{
    const Ended help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* option :
         {"--grab", "--size", "--zoom", "--roi", "--overlays", "--lang", "--theme", "--version"})
        EXPECT_TRUE(help.output.contains(option)) << option;
    EXPECT_EQ(run({"--version"}).output.trimmed(), "ormalux-view " ORMALUX_VERSION);
}

TEST_F(ProgramTest, GrabLeavesWhatTheOperatorChose)
{
    const QString good = filled(Qt::red);
    const auto listed = [this] { return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden); };
    const QStringList before = listed();
    ASSERT_EQ(run(grabbing({good, "--lang", "en"})).code, 0);
    EXPECT_EQ(listed(), before);
}

} // namespace
