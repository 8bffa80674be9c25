#include "tools/RecipeFile.h"

#include "platform/File.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace ormalux {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("ormalux::RecipeFile", source);
}

/// The same length with comments blanked out, so that places in it are places in the file.
QByteArray withoutComments(QByteArray json)
{
    bool inText = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        const char next = i + 1 < json.size() ? json[i + 1] : '\0';
        if (inText) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inText = false;
        } else if (c == '"') {
            inText = true;
        } else if (c == '/' && (next == '/' || next == '*')) {
            const qsizetype found = next == '/' ? json.indexOf('\n', i) : json.indexOf("*/", i + 2);
            const qsizetype end = found < 0 ? json.size() : next == '/' ? found : found + 2;
            for (; i < end; ++i)
                if (json[i] != '\n')
                    json[i] = ' ';
            --i;
        }
    }
    return json;
}

/// The place of the bracket that closes the value of "steps"; -1 if there is none.
qsizetype endOfSteps(const QByteArray& json)
{
    int depth = 0;
    int stepsDepth = -1;
    bool stepsNext = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '"') {
            const qsizetype begin = i + 1;
            for (++i; i < json.size() && json[i] != '"'; ++i)
                i += json[i] == '\\';
            stepsNext = depth == 1 && json.mid(begin, i - begin) == "steps";
        } else if (c == '[' || c == '{') {
            if (stepsNext && c == '[' && depth == 1)
                stepsDepth = depth;
            ++depth;
        } else if (c == ']' || c == '}') {
            if (--depth == stepsDepth)
                return i;
        } else if (c == ',') {
            stepsNext = false;
        }
    }
    return -1;
}

/// One line, the step's name first, as recipes are written by hand.
QByteArray stepLine(QJsonObject step)
{
    const auto item = [](const QString& key, const QJsonValue& value) {
        const QByteArray pair = QJsonDocument(QJsonObject{{key, value}}).toJson(QJsonDocument::Compact);
        return pair.mid(1, pair.size() - 2);
    };
    QByteArray line = "{" + item(QStringLiteral("step"), step.take(QStringLiteral("step")));
    for (auto it = step.constBegin(); it != step.constEnd(); ++it)
        line += ", " + item(it.key(), it.value());
    return line + "}";
}

QByteArray stepLines(const QList<QJsonObject>& steps)
{
    QByteArray lines;
    for (const QJsonObject& step : steps)
        lines += (lines.isEmpty() ? "        " : ",\n        ") + stepLine(step);
    return lines;
}

/// New lines go in front of the closing bracket, the comma right behind the last step: comments between the
/// two stay with the step that they follow.
void insertBeforeBracket(QByteArray& recipe, const QByteArray& plain, qsizetype bracket,
                         const QByteArray& lines, bool first)
{
    qsizetype indent = bracket;
    while (indent > 0 && (recipe[indent - 1] == ' ' || recipe[indent - 1] == '\t'))
        --indent;
    const bool ownLine = indent > 0 && recipe[indent - 1] == '\n';
    recipe.insert(ownLine ? indent : bracket, ownLine ? lines + "\n" : "\n" + lines + "\n    ");
    qsizetype last = bracket;
    while (last > 0 && QByteArray(" \t\r\n").contains(plain[last - 1]))
        --last;
    if (!first)
        recipe.insert(last, ',');
}

/// Sources beside the recipe, or in folders there, are named from it: the two can be moved together. The
/// others keep their whole paths.
QList<QJsonObject> namedFrom(const QDir& folder, QList<QJsonObject> steps)
{
    for (QJsonObject& step : steps) {
        const auto found = step.find(QStringLiteral("source"));
        if (found == step.end())
            continue;
        QJsonArray files = found->isArray() ? found->toArray() : QJsonArray{*found};
        for (QJsonValueRef file : files) {
            const QString name = folder.relativeFilePath(file.toString());
            if (!name.startsWith(QStringLiteral("..")))
                file = name;
        }
        *found = files;
    }
    return steps;
}

/// Whether the recipe is the document with the steps behind its own: a key that stands twice, say, hides the
/// steps that were added.
bool isExtended(const QByteArray& recipe, QJsonObject document, const QList<QJsonObject>& steps)
{
    QJsonArray all = document[QStringLiteral("steps")].toArray();
    for (const QJsonObject& step : steps)
        all.append(step);
    document[QStringLiteral("steps")] = all;
    return QJsonDocument::fromJson(withoutComments(recipe)).object() == document;
}

bool writeWhole(const QString& path, const QByteArray& bytes)
{
    return writeFile(path.toUtf8().constData(),
                     {reinterpret_cast<const std::uint8_t*>(bytes.constData()), std::size_t(bytes.size())});
}

} // namespace

QString appendToRecipe(const QString& path, const QList<QJsonObject>& found)
{
    const QList<QJsonObject> steps = namedFrom(QFileInfo(path).absoluteDir(), found);
    constexpr qint64 largestRecipe = 16 << 20;
    QFile file(path);
    QByteArray recipe = "{\n    \"steps\": [\n" + stepLines(steps) + "\n    ]\n}\n";
    if (file.exists()) {
        if (file.size() > largestRecipe || !file.open(QIODevice::ReadOnly))
            return text("레시피 파일을 읽을 수 없습니다: %1").arg(path);
        recipe = file.readAll();
        const QByteArray plain = withoutComments(recipe);
        const QJsonDocument document = QJsonDocument::fromJson(plain);
        const qsizetype end = endOfSteps(plain);
        if (!document.isObject() || !document.object().value(QStringLiteral("steps")).isArray() || end < 0)
            return text("레시피 파일이 아닙니다: %1").arg(path);
        const bool first = document.object().value(QStringLiteral("steps")).toArray().isEmpty();
        insertBeforeBracket(recipe, plain, end, stepLines(steps), first);
        if (!isExtended(recipe, document.object(), steps))
            return text("레시피 파일이 아닙니다: %1").arg(path);
    }
    file.close();
    return writeWhole(path, recipe) ? QString() : text("레시피 파일을 저장할 수 없습니다: %1").arg(path);
}

} // namespace ormalux
