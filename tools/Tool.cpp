#include "tools/Tool.h"

#include <QJsonArray>
#include <QString>

namespace ormalux {

namespace {

std::string csvField(const std::string& text)
{
    if (text.find_first_of(",\"\n\r") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"')
            quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

} // namespace

ToolScene sceneOf(const ToolHost& host)
{
    const CSize size = host.size();
    return {size.cx, size.cy, host.area(), host.isColor(), host.pictureFile()};
}

void addArea(QJsonObject& step, const ToolScene& scene)
{
    const CRect& area = scene.area;
    if (!scene.wholePicture())
        step[QStringLiteral("roi")] =
            QJsonArray{int(area.left), int(area.top), int(area.right), int(area.bottom)};
}

std::string resultText(const ResultValue& value)
{
    if (const auto* const whole = std::get_if<long long>(&value))
        return std::to_string(*whole);
    if (const auto* const real = std::get_if<double>(&value))
        return QString::number(*real, 'f', 6).toStdString();
    return std::get<std::string>(value);
}

std::string resultCsv(const ResultList& list)
{
    std::string text;
    const auto line = [&text](const auto& values, auto&& field) {
        for (std::size_t i = 0; i < values.size(); ++i)
            (text += i ? "," : "") += csvField(field(values[i]));
        text += '\n';
    };
    line(list.columns, [](const std::string& name) { return name; });
    for (const ResultList::Row& row : list.rows)
        line(row.values, resultText);
    return text;
}

} // namespace ormalux
