#include "color/VisionImage24.h"
#include "platform/Stdlib.h"
#include "tests/support/SourceFiles.h"
#include "tests/support/ToolFixture.h"
#include "tools/LatestJob.h"
#include "tools/ResultTable.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

// What an operator finds in a dialog is what the program and the recipe that the dialog writes find again:
// the programs are compiled against the built library and run, the recipes replayed by the command line.

namespace {

using ormalux::Picture;
using ormalux::ResultList;

/// What a tool is held to.
enum class Proof
{
    Results, ///< the program prints the list as CSV, the replayed step finds the list's records
    Text,    ///< the program prints what the row says, the replayed recipe makes the picture that Apply makes
    Effect   ///< program and recipe both make the picture that Apply makes
};

struct Row
{
    const char* name;
    int command;
    const char* dialog;
    Proof proof;
    bool color; ///< whether the picture is
    CRect area; ///< all 0: the whole picture
    void (*choose)(QDialog*);
    std::string (*text)(QDialog*) = nullptr;
};

/// Where the pictures, programs and recipes are, and the sources that a row writes for its dialog.
const QTemporaryDir& folder()
{
    static const QTemporaryDir made;
    return made;
}

std::string inFolder(const std::string& name)
{
    return folder().filePath(QString::fromStdString(name)).toStdString();
}

template <class Widget>
Widget* of(QDialog* dialog, const char* name)
{
    return dialog->findChild<Widget*>(QLatin1String(name));
}

void set(QDialog* dialog, const char* name, int value)
{
    of<QSpinBox>(dialog, name)->setValue(value);
}

void setReal(QDialog* dialog, const char* name, double value)
{
    of<QDoubleSpinBox>(dialog, name)->setValue(value);
}

void setLevel(QDialog* dialog, int level)
{
    of<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
    set(dialog, "threshold", level);
}

void choose(QDialog* dialog, const char* radio)
{
    of<QRadioButton>(dialog, radio)->setChecked(true);
}

void lighten(QDialog* dialog)
{
    set(dialog, "brightness", -31);
    set(dialog, "contrast", 44);
}

/// Not the same when mirrored.
void filterOblique(QDialog* dialog)
{
    const int kernel[] = {3, -1, 0, 2, 5, -2, 0, 4, -7};
    for (int i = 0; i < 9; ++i)
        set(dialog, qPrintable(QStringLiteral("kernel%1").arg(i)), kernel[i]);
    set(dialog, "divisor", 5);
    set(dialog, "offset", 17);
}

std::string thresholdText(QDialog* dialog)
{
    return "threshold\n" + std::to_string(of<QSpinBox>(dialog, "threshold")->value()) + "\n";
}

/// Lists sources, given as what their files hold, beside the recipes.
void addSources(QDialog* dialog, const char* ending, const QList<QByteArray>& sources);

/// The upper left disc and its surroundings in white on black.
QByteArray discSource();

void matchDisc(QDialog* dialog, int level)
{
    addSources(dialog, ".mcs", {discSource()});
    of<QCheckBox>(dialog, "autoThreshold")->setChecked(level < 0);
    if (level >= 0)
        set(dialog, "threshold", level);
}

void matchOverLevels(QDialog* dialog)
{
    matchDisc(dialog, 110);
    of<QCheckBox>(dialog, "thresholdRange")->setChecked(true);
    set(dialog, "below", 30);
    set(dialog, "above", 45);
}

/// Specks in the discs stand for characters, among them such as a table quotes.
void readSpecks(QDialog* dialog)
{
    const QByteArray black(1, '\0');
    addSources(dialog, ".ocs",
               {testing_support::sourceBytes('A', 2, 2, black.repeated(4)),
                testing_support::sourceBytes('"', 1, 1, black),
                testing_support::sourceBytes(',', 2, 2, black + "\xff\xff" + black),
                testing_support::sourceBytes(200, 3, 1, black.repeated(3))});
    of<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
    set(dialog, "threshold", 201);
    for (const char* const size : {"minWidth", "minHeight"})
        set(dialog, size, 1);
}

const CRect everything(0, 0, 0, 0);
const CRect part(7, 9, 61, 48);

/// By rising command; a tool has as many rows as it has calls to make.
const Row rows[] = {
    {"blobs", 6601, "CBlobDlg", Proof::Results, false, everything, nullptr},
    {"sorted dark blobs of a part down to one pixel", 6601, "CBlobDlg", Proof::Results, false, part,
     [](QDialog* dialog) {
         setLevel(dialog, 40);
         choose(dialog, "objectBlack");
         set(dialog, "minWidth", 1);
         set(dialog, "minHeight", 1);
         set(dialog, "maxWidth", 40);
         of<QComboBox>(dialog, "sort")->setCurrentIndex(7);
     }},
    {"blobs of a colour picture's gray form", 6601, "CBlobDlg", Proof::Results, true, part, nullptr},
    {"histogram", 6602, "CHistogramDlg", Proof::Results, false, part, nullptr},
    {"histogram of a colour picture's gray form", 6602, "CHistogramDlg", Proof::Results, true, everything,
     nullptr},
    {"automatic threshold", 6603, "CThresholdDlg", Proof::Text, false, part, nullptr, thresholdText},
    {"threshold", 6603, "CThresholdDlg", Proof::Text, false, everything,
     [](QDialog* dialog) {
         of<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
         set(dialog, "threshold", 117);
     },
     thresholdText},
    {"automatic threshold of every third line", 6603, "CThresholdDlg", Proof::Text, false, everything,
     [](QDialog* dialog) { set(dialog, "step", 3); }, thresholdText},
    {"automatic threshold of a colour picture's gray form", 6603, "CThresholdDlg", Proof::Text, true, part,
     nullptr, thresholdText},
    {"double threshold", 6604, "CDoubleThresholdDlg", Proof::Effect, false, part,
     [](QDialog* dialog) {
         set(dialog, "upper", 150);
         set(dialog, "lower", 60);
         set(dialog, "value", 90);
     }},
    {"double threshold of one level", 6604, "CDoubleThresholdDlg", Proof::Effect, false, everything,
     [](QDialog* dialog) {
         set(dialog, "upper", 38);
         set(dialog, "lower", 38);
     }},
    {"rotate", 6610, "CRotateDlg", Proof::Effect, false, part,
     [](QDialog* dialog) { setReal(dialog, "angle", 12.34); }},
    {"rotate in colour", 6610, "CRotateDlg", Proof::Effect, true, everything,
     [](QDialog* dialog) {
         set(dialog, "centerX", 30);
         set(dialog, "centerY", -4);
         setReal(dialog, "angle", -7.5);
     }},
    {"user filter", 6633, "CUserFilterDlg", Proof::Effect, false, part, filterOblique},
    {"user filter in colour", 6633, "CUserFilterDlg", Proof::Effect, true, everything, filterOblique},
    {"user filter on a part in colour", 6633, "CUserFilterDlg", Proof::Effect, true, part, filterOblique},
    {"gamma", 6701, "CGammaDlg", Proof::Effect, false, part,
     [](QDialog* dialog) { setReal(dialog, "gamma", 1.83); }},
    {"gamma in colour", 6701, "CGammaDlg", Proof::Effect, true, everything,
     [](QDialog* dialog) { setReal(dialog, "gamma", 0.35); }},
    {"light", 6702, "CLightenDlg", Proof::Effect, false, everything, lighten},
    {"light on a part in colour", 6702, "CLightenDlg", Proof::Effect, true, part, lighten},
    {"point gauge", 6709, "CPointGauageDlg", Proof::Results, false, part, nullptr},
    {"point gauge along a rising line from its far end", 6709, "CPointGauageDlg", Proof::Results, true,
     everything,
     [](QDialog* dialog) {
         set(dialog, "x1", 80);
         set(dialog, "y1", 5);
         set(dialog, "x2", 3);
         set(dialog, "y2", 58);
         choose(dialog, "whiteAndBlack");
         setLevel(dialog, 90);
     }},
    {"line gauge", 6710, "CLineGauageDlg", Proof::Results, false, {4, 8, 21, 28}, nullptr},
    {"line gauge by steps, whose columns depend on the machine",
     6710,
     "CLineGauageDlg",
     Proof::Results,
     false,
     {24, 26, 55, 46},
     [](QDialog* dialog) {
         choose(dialog, "directionHorizental");
         set(dialog, "step", 5);
         setLevel(dialog, 100);
     }},
    {"read", 6711, "COcrMatchDlg", Proof::Results, false, everything, readSpecks},
    {"read a part of a colour picture's gray form", 6711, "COcrMatchDlg", Proof::Results, true, part,
     [](QDialog* dialog) {
         readSpecks(dialog);
         set(dialog, "threshold", 185);
     }},
    {"match", 6712, "CMatchDlg", Proof::Results, false, everything,
     [](QDialog* dialog) { matchDisc(dialog, 101); }},
    {"match at the automatic level of a part", 6712, "CMatchDlg", Proof::Results, false, part,
     [](QDialog* dialog) { matchDisc(dialog, -1); }},
    {"match over a range of levels", 6712, "CMatchDlg", Proof::Results, false, everything, matchOverLevels},
    {"match over a range in a part of a colour picture", 6712, "CMatchDlg", Proof::Results, true, part,
     matchOverLevels},
};

constexpr int width = 83; // rows that need padding
constexpr int height = 61;

/// Bright parts with soft edges on a dark, slightly uneven ground.
Picture drawn(bool color)
{
    static const struct
    {
        double x, y, radius;
    } parts[] = {{20, 18, 11}, {58, 17, 8}, {38, 44, 12}, {70, 47, 7}};
    const int channels = color ? 3 : 1;
    Picture picture{
        width, height, 8 * channels, std::vector<std::uint8_t>(std::size_t(width) * height * channels), {}};
    std::uint8_t* p = picture.pixels.data();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c) {
                double level = 36 + 5 * c + (x * 7 + y * 13 + x * y * 3) % 5;
                for (const auto& disc : parts) {
                    const double inside = disc.radius - std::hypot(x - disc.x, y - disc.y);
                    level += std::clamp(inside / 6 + 0.5, 0.0, 1.0) * (165 - 20 * c);
                }
                *p++ = std::uint8_t(level);
            }
    return picture;
}

bool same(const Picture& a, const Picture& b)
{
    return a.width == b.width && a.height == b.height && a.bitCount == b.bitCount && a.pixels == b.pixels;
}

/// Everything that one row's dialog gave.
struct Record
{
    const Row* row;
    std::string program;
    std::string recipe; ///< file
    std::string text;   ///< that the program is to print
    ResultList results;
    Picture applied;
};

std::string pictureFile(bool color)
{
    return inFolder(color ? "color.bmp" : "gray.bmp");
}

void addSources(QDialog* dialog, const char* ending, const QList<QByteArray>& sources)
{
    QStringList files;
    for (const QByteArray& source : sources) {
        static int made = 0;
        files << QString::fromStdString(inFolder("source" + std::to_string(++made) + ending));
        ASSERT_TRUE(testing_support::writeBytes(files.back(), source));
    }
    of<QPushButton>(dialog, "addSource")->click();
    auto* const chooser = of<QFileDialog>(dialog, "openSource");
    ASSERT_TRUE(chooser);
    if (files.size() == 1)
        Q_EMIT chooser->fileSelected(files.front());
    Q_EMIT chooser->filesSelected(files);
    chooser->close();
}

QByteArray discSource()
{
    Picture gray = drawn(false);
    const CKestImage image(gray.width, gray.height, gray.pixels.data());
    return testing_support::sourceBytes(image, {9, 7, 31, 29}, 110, 255);
}

class Replay : public testing_support::ToolFixture
{
protected:
    static void SetUpTestSuite()
    {
        for (const bool color : {false, true})
            ASSERT_TRUE(ormalux::writePicture(pictureFile(color).c_str(), drawn(color).source()));
    }

    static QDialog* tried(Replay& window, const Row& row)
    {
        window.window.LoadImageGdip(pictureFile(row.color).c_str());
        if (row.area.right > 0)
            window.setArea(row.area.left, row.area.top, row.area.right, row.area.bottom);
        QDialog* const dialog = window.open(row.command, row.dialog);
        if (!dialog)
            return nullptr;
        if (row.choose)
            row.choose(dialog);
        settle();
        const auto* const job = dialog->findChild<ormalux::LatestJob*>();
        EXPECT_TRUE(waitFor([job] { return !job || !job->isRunning(); }));
        return dialog;
    }

    Picture shownPicture() const
    {
        const std::unique_ptr<CKestImage24> color(window.GetImage24());
        if (!color || color->IsEmpty())
            return ofGray();
        Picture picture{color->GetWidth(), color->GetHeight(), 24, {}, {}};
        const auto view = std::as_const(*color).view();
        for (int y = 0; y < view.height; ++y) {
            const std::uint8_t* const line = view.pixels + ormalux::paddedStride(view.width) * y;
            picture.pixels.insert(picture.pixels.end(), line, line + 3 * view.width);
        }
        return picture;
    }

    Picture ofGray() const
    {
        const std::unique_ptr<CKestImage> gray(window.GetImage());
        const auto view = std::as_const(*gray).view();
        return {view.width, view.height, 8, {view.pixels, view.pixels + gray->GetImageLen()}, {}};
    }

    /// "Add to Recipe ..." with the file chosen in the dialog that it opens.
    static void addToRecipe(QDialog* dialog, const std::string& file)
    {
        click(dialog, "addToRecipe");
        auto* const chooser = of<QFileDialog>(dialog, "recipeFile");
        ASSERT_TRUE(chooser);
        Q_EMIT chooser->fileSelected(QString::fromStdString(file));
        chooser->close();
        settle();
    }

    Record record(const Row& row, int number)
    {
        Record made{&row, {}, inFolder("recipe" + std::to_string(number) + ".json"), {}, {}, {}};
        QDialog* const dialog = tried(*this, row);
        if (!dialog)
            return made;
        click(dialog, "programToClipboard");
        made.program = clipboard();
        addToRecipe(dialog, made.recipe);
        if (row.proof == Proof::Results)
            made.results = of<ormalux::ResultTable>(dialog, "results")->results();
        made.text = row.text ? row.text(dialog) : ormalux::resultCsv(made.results);
        if (row.proof != Proof::Results && !(row.color && row.proof == Proof::Text)) {
            click(dialog, "apply");
            EXPECT_FALSE(dialog->isVisible()) << "not applied";
            made.applied = shownPicture();
            EXPECT_FALSE(same(made.applied, drawn(row.color))) << "a row that changes nothing proves nothing";
        }
        return made;
    }
};

/// A dialog after the other, each on a window of its own.
const std::vector<Record>& records()
{
    class One : public Replay
    {
    public:
        using Replay::record;
        void TestBody() override {}
    };
    static const std::vector<Record> all = [] {
        std::vector<Record> made;
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            One window;
            made.push_back(window.record(row, int(made.size())));
        }
        return made;
    }();
    return all;
}

/// Runs commands, as many at a time as there are processors; what they wrote to standard output, and standard
/// error behind it when one failed.
std::vector<std::string> outputsOf(const std::vector<QStringList>& commands)
{
    std::vector<std::string> outputs(commands.size());
    const std::size_t together = std::size_t(std::max(2, CStdlib::GetNumOfProcessors()));
    for (std::size_t first = 0; first < commands.size(); first += together) {
        std::vector<std::unique_ptr<QProcess>> running;
        for (std::size_t i = first; i < std::min(first + together, commands.size()); ++i) {
            running.push_back(std::make_unique<QProcess>());
            running.back()->start(commands[i].front(), commands[i].mid(1));
        }
        for (std::size_t i = 0; i < running.size(); ++i) {
            QProcess& process = *running[i];
            EXPECT_TRUE(process.waitForFinished(100000)) << commands[first + i].front().toStdString();
            outputs[first + i] = process.readAllStandardOutput().toStdString();
            const bool failed = process.exitStatus() != QProcess::NormalExit || process.exitCode() > 1;
            if (failed)
                outputs[first + i] += process.readAllStandardError().toStdString();
            EXPECT_FALSE(failed) << outputs[first + i];
        }
    }
    return outputs;
}

QString numbered(const char* name, std::size_t number, const char* ending = "")
{
    return folder().filePath(QLatin1String(name) + QString::number(number) + QLatin1String(ending));
}

TEST_F(Replay, ProgramsPrintAndMakeWhatTheDialogsShow)
{
#if !defined(ORMALUX_COMPILER)
    GTEST_SKIP() << "this build's library does not stand alone";
#else
    const QString library = QStringLiteral(ORMALUX_LIBRARY);
    std::vector<QStringList> compilers, programs;
    for (std::size_t i = 0; i < records().size(); ++i) {
        const Record& record = records()[i];
        QFile source(numbered("program", i, ".cpp"));
        ASSERT_TRUE(source.open(QIODevice::WriteOnly));
        source.write(record.program.data(), qint64(record.program.size()));
        const QString built = numbered("program", i);
        compilers.push_back({QStringLiteral(ORMALUX_COMPILER), QStringLiteral("-std=c++17"),
                             QStringLiteral("-Wall"), QStringLiteral("-Wextra"), QStringLiteral("-Werror"),
                             QStringLiteral("-I" ORMALUX_INCLUDE), source.fileName(), QStringLiteral("-o"),
                             built, library, QStringLiteral("-Wl,-rpath,") + QFileInfo(library).path()});
        programs.push_back({built, QString::fromStdString(pictureFile(record.row->color))});
        if (record.row->proof == Proof::Effect)
            programs.back() << numbered("made", i, ".bmp");
    }
    outputsOf(compilers);
    const std::vector<std::string> printed = outputsOf(programs);
    for (std::size_t i = 0; i < printed.size(); ++i) {
        const Record& record = records()[i];
        SCOPED_TRACE(record.row->name);
        if (record.row->proof == Proof::Effect)
            EXPECT_TRUE(same(ormalux::readPicture(qPrintable(programs[i].last())), record.applied))
                << record.program;
        else
            EXPECT_EQ(printed[i], record.text) << record.program;
    }
#endif
}

#if defined(ORMALUX_CLI)

/// The records of the last step of a line of `ormalux run`.
QJsonArray recordsOf(const std::string& line)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(line));
    const QJsonArray steps = document.object().value(QStringLiteral("steps")).toArray();
    const QJsonObject last = steps.isEmpty() ? QJsonObject() : steps.last().toObject();
    for (const QJsonValue& value : last)
        if (value.isArray())
            return value.toArray();
    return {};
}

std::string textOf(const QJsonValue& value, const ormalux::ResultValue& like)
{
    if (value.isString())
        return value.toString().toStdString();
    if (std::holds_alternative<double>(like))
        return ormalux::resultText(value.toDouble());
    return ormalux::resultText((long long)value.toInteger());
}

const std::map<std::string, LONG RECT::*> edges = {
    {"left", &RECT::left}, {"top", &RECT::top}, {"right", &RECT::right}, {"bottom", &RECT::bottom}};

/// Column for column, as far as both name it.
void expectSame(const QJsonArray& found, const ResultList& shown)
{
    ASSERT_EQ(found.size(), qsizetype(shown.rows.size()));
    ASSERT_FALSE(shown.rows.empty()) << "a row that finds nothing proves nothing";
    int compared = 0;
    for (std::size_t i = 0; i < shown.rows.size(); ++i) {
        const QJsonObject record = found[qsizetype(i)].toObject();
        for (std::size_t column = 0; column < shown.columns.size(); ++column) {
            const auto field = record.constFind(QString::fromStdString(shown.columns[column]));
            if (field == record.constEnd())
                continue;
            const ormalux::ResultValue& value = shown.rows[i].values[column];
            // A list may count from the region's corner; the row's box is of the picture, as the record is.
            const auto edge = edges.find(shown.columns[column]);
            const std::string expected = edge == edges.end()
                                             ? ormalux::resultText(value)
                                             : std::to_string(shown.rows[i].box.*edge->second);
            EXPECT_EQ(textOf(*field, value), expected) << shown.columns[column] << " of " << i;
            ++compared;
        }
    }
    EXPECT_GE(compared, 2 * int(shown.rows.size()));
}

#endif

TEST_F(Replay, RecipesFindAndMakeWhatTheDialogsShow)
{
#if !defined(ORMALUX_CLI)
    GTEST_SKIP() << "the command line program is not built";
#else
    std::vector<QStringList> runs;
    for (std::size_t i = 0; i < records().size(); ++i)
        runs.push_back({QStringLiteral(ORMALUX_CLI), QStringLiteral("run"),
                        QString::fromStdString(records()[i].recipe),
                        QString::fromStdString(pictureFile(records()[i].row->color)),
                        QStringLiteral("--output"), numbered("replayed", i, ".bmp")});
    const std::vector<std::string> lines = outputsOf(runs);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Record& record = records()[i];
        SCOPED_TRACE(record.row->name);
        if (record.row->proof == Proof::Results) {
            expectSame(recordsOf(lines[i]), record.results);
        } else if (!record.applied.empty()) {
            EXPECT_TRUE(same(ormalux::readPicture(qPrintable(runs[i].last())), record.applied)) << lines[i];
        }
    }
#endif
}

} // namespace
