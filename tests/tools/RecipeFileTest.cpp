#include "tools/RecipeFile.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace {

using ormalux::appendToRecipe;

/// Pieces that recipes are put together from; comments hold a '#', nothing else does.
class Writer
{
public:
    explicit Writer(unsigned seed) : m_engine(seed) {}

    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_engine); }

    QByteArray text()
    {
        static const char* const pieces[] = {"]",  "[",    "{",    "}", "//",    "/*",
                                             "*/", "\\\"", "\\\\", ",", "steps", "컬러"};
        QByteArray made = "\"";
        for (int i = below(5); i > 0; --i)
            made += pieces[below(int(std::size(pieces)))];
        return made + "\"";
    }

    /// Blanks and comments, as they may stand between any two tokens.
    QByteArray gap()
    {
        static const char* const gaps[] = {
            "", " ", "\n", "\t\r\n  ", "/*##*/", "// #]\n", "/*# \" #*/", "/*#\n // }#*/", "//# \"[{\n"};
        QByteArray made;
        for (int i = below(3); i > 0; --i)
            made += gaps[below(int(std::size(gaps)))];
        return made;
    }

    QByteArray step()
    {
        QByteArray made = "{" + gap() + "\"step\"" + gap() + ":" + text();
        if (below(2))
            made += gap() + ",\"roi\":[" + gap() + "1,2,3" + gap() + ",4]";
        if (below(3) == 0)
            made += "," + gap() + "\"steps\":[[]," + text() + "]";
        return made + gap() + "}";
    }

    QByteArray steps()
    {
        QByteArray made = "\"steps\"" + gap() + ":" + gap() + "[" + gap();
        const int count = below(4);
        for (int i = 0; i < count; ++i)
            made += (i > 0 ? "," + gap() : QByteArray()) + step() + gap();
        return made + "]" + gap();
    }

    QByteArray recipe()
    {
        const QByteArray name = "\"name\":" + gap() + text() + gap();
        const QByteArray other = "\"notes\":{\"steps\":[" + text() + "]}" + gap();
        switch (below(4)) {
        case 0:
            return gap() + "{" + gap() + steps() + "}" + gap();
        case 1:
            return gap() + "{" + name + "," + gap() + steps() + "}" + gap();
        case 2:
            return gap() + "{" + gap() + steps() + "," + name + "}" + gap();
        default:
            return gap() + "{" + other + "," + steps() + "," + name + "}" + gap();
        }
    }

private:
    std::mt19937 m_engine;
};

QJsonObject parsed(const QByteArray& recipe)
{
    static const QRegularExpression comments(QStringLiteral("//[^\\n#\"]*#[^\\n]*\\n|/\\*#.*?\\*/"),
                                             QRegularExpression::DotMatchesEverythingOption);
    const QString plain = QString::fromUtf8(recipe).replace(comments, QStringLiteral(" "));
    return QJsonDocument::fromJson(plain.toUtf8()).object();
}

/// Whether every byte of one stands in the other in the same order.
bool within(const QByteArray& part, const QByteArray& whole)
{
    qsizetype found = 0;
    for (const char c : whole)
        found += found < part.size() && part[found] == c;
    return found == part.size();
}

class RecipeFile : public testing::Test
{
protected:
    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    static void write(const QString& file, const QByteArray& bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static QByteArray read(const QString& file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    QTemporaryDir folder;
    const QJsonObject blur{{"step", "blur"}, {"roi", QJsonArray{1, 2, 3, 4}}};
    const QJsonObject match{{"step", "match"}, {"label", "C:\\parts\\\"a\".mcs"}, {"min_yield", 0.8}};
};

TEST_F(RecipeFile, WhatStandsInTheFileStaysAndTheStepsComeLast)
{
    const QString file = path("r.json");
    for (unsigned seed = 0; seed < 150; ++seed) {
        Writer writer(seed);
        const QByteArray before = writer.recipe();
        SCOPED_TRACE(before.toStdString());
        QJsonObject expected = parsed(before);
        ASSERT_TRUE(expected.contains("steps")) << "the test's own reader fails";
        QJsonArray steps = expected["steps"].toArray();
        steps.append(blur);
        steps.append(match);
        expected["steps"] = steps;

        write(file, before);
        ASSERT_EQ(appendToRecipe(file, {blur, match}).toStdString(), "");
        const QByteArray after = read(file);
        ASSERT_TRUE(within(before, after)) << after.toStdString();
        ASSERT_EQ(parsed(after), expected) << after.toStdString();
    }
}

TEST_F(RecipeFile, StepsFollowTheLastOneAsIfWrittenByHand)
{
    const QString file = path("new.json");
    ASSERT_EQ(appendToRecipe(file, {blur}).toStdString(), "");
    ASSERT_EQ(appendToRecipe(file, {QJsonObject{{"step", "invert"}}}).toStdString(), "");
    EXPECT_EQ(read(file).toStdString(), "{\n"
                                        "    \"steps\": [\n"
                                        "        {\"step\":\"blur\", \"roi\":[1,2,3,4]},\n"
                                        "        {\"step\":\"invert\"}\n"
                                        "    ]\n"
                                        "}\n");
}

TEST_F(RecipeFile, ForeignFilesStayUntouched)
{
    const QString file = path("foreign.json");
    const QByteArray foreign[] = {"",
                                  "[]",
                                  "{}",
                                  "hello",
                                  "{\"steps\": {}}",
                                  "{\"steps\": 1}",
                                  "{\"steps\": []",
                                  "{\"steps\": [}",
                                  "{\"steps\": [] /* open",
                                  "{\"a\": {\"steps\": []}}",
                                  "{\"steps\": [{}], \"steps\": []}",
                                  "[{\"steps\": []}]",
                                  QByteArray("\0\x01\xff\xfe{\"steps\": []}", 18),
                                  QByteArray(200000, '['),
                                  "{\"steps\": []}" + QByteArray(16 << 20, ' ')};
    for (const QByteArray& bytes : foreign) {
        SCOPED_TRACE(bytes.left(60).toStdString());
        write(file, bytes);
        const QString message = appendToRecipe(file, {blur});
        EXPECT_TRUE(message.contains(file)) << message.toStdString();
        EXPECT_TRUE(read(file) == bytes);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
              QStringList{"foreign.json"}); // nothing half written
}

TEST_F(RecipeFile, AFolderThatIsMissingOrInTheWayIsNamed)
{
    for (const QString& file : {path("none/r.json"), folder.path()})
        EXPECT_TRUE(appendToRecipe(file, {blur}).contains(file)) << file.toStdString();
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

} // namespace
