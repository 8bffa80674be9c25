#include "app/Results.h"

#include "view/ImageViewWnd.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <optional>

namespace ormalux::viewer {

namespace {

constexpr char tag[] = "RESULTS";
constexpr qint64 largestFile = qint64(256) << 20;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Results)
};

/// Colours by the name of the list that a record stands in, as the command line annotates them.
struct ListColor
{
    const char* list;
    COLORREF color;
};
constexpr ListColor colors[] = {
    {"parts", RGB(255, 230, 0)}, {"blobs", RGB(255, 64, 64)}, {"characters", RGB(64, 160, 255)}};
constexpr COLORREF otherColor = RGB(255, 0, 200);

COLORREF colorOf(const QString& list)
{
    for (const ListColor& row : colors)
        if (list == QLatin1String(row.list))
            return row.color;
    return otherColor;
}

/// Whole numbers of these names; nothing when one is missing or no pixel of any picture.
template <std::size_t Count>
std::optional<std::array<int, Count>> coordinates(const QJsonObject& record,
                                                  const std::array<const char*, Count>& names)
{
    std::array<int, Count> found{};
    for (std::size_t i = 0; i < Count; ++i) {
        const QJsonValue value = record.value(QLatin1String(names[i]));
        if (!value.isDouble() || !(std::abs(value.toDouble()) < 1e6))
            return std::nullopt;
        found[i] = int(std::lround(value.toDouble()));
    }
    return found;
}

QString labelOf(const QJsonObject& record)
{
    if (record.contains(QLatin1String("character")))
        return record.value(QLatin1String("character")).toString();
    if (!record.contains(QLatin1String("number")))
        return {};
    const QString number = QString::number(record.value(QLatin1String("number")).toInt());
    const QJsonValue yield = record.value(QLatin1String("yield"));
    return yield.isDouble() ? QStringLiteral("%1: %2 %").arg(number).arg(100 * yield.toDouble(), 0, 'f', 0)
                            : number;
}

void drawBox(CKestWnd& window, const std::array<int, 4>& box, const QString& label, COLORREF color)
{
    const auto [left, top, right, bottom] = box;
    window.AddRectangle(left - 1, top - 1, right + 2, bottom + 2, 0, 1, color, tag);
    window.AddLabel(CRect(left - 1, top - 1, right + 2, bottom + 2), LABEL_ABOVE, label.toUtf8().constData(),
                    color, tag);
}

bool drawRecord(CKestWnd& window, const QJsonObject& record, const QString& list)
{
    const COLORREF color = colorOf(list);
    if (const auto box = coordinates<4>(record, {"left", "top", "right", "bottom"})) {
        drawBox(window, *box, labelOf(record), color);
        return true;
    }
    if (const auto line = coordinates<4>(record, {"x1", "y1", "x2", "y2"})) {
        window.AddLine((*line)[0], (*line)[1], (*line)[2], (*line)[3], 0, 2, color, tag);
        if (const auto center = coordinates<2>(record, {"center_x", "center_y"}))
            window.AddCrossLine((*center)[0], (*center)[1], 5, 0, 1, color, tag);
        return true;
    }
    const auto point = coordinates<2>(record, {"x", "y"});
    if (point)
        window.AddCrossLine((*point)[0], (*point)[1], 4, 0, 1, color, tag);
    return point.has_value();
}

/// Every record in the value's lists, whatever step they stand under.
int drawLists(CKestWnd& window, const QJsonValue& value, const QString& name)
{
    int drawn = 0;
    if (value.isArray()) {
        const QJsonArray list = value.toArray();
        for (const QJsonValue& entry : list) {
            const QJsonObject record = entry.toObject();
            if (drawRecord(window, record, name))
                ++drawn;
            else
                drawn += drawLists(window, record, name);
        }
    } else {
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member)
            drawn += drawLists(window, member.value(), member.key());
    }
    return drawn;
}

bool objectsOf(const QByteArray& text, QList<QJsonObject>& objects)
{
    const QJsonDocument whole = QJsonDocument::fromJson(text);
    if (whole.isObject()) {
        objects << whole.object();
        return true;
    }
    for (const QByteArray& line : text.split('\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const QJsonDocument one = QJsonDocument::fromJson(line);
        if (!one.isObject())
            return false;
        objects << one.object();
    }
    return !objects.isEmpty();
}

QString whyUnreadable(const QString& path, QList<QJsonObject>& objects)
{
    QFile file(path);
    if (!file.exists())
        return Texts::tr("파일을 찾을 수 없습니다.");
    if (!QFileInfo(path).isFile()) // a pipe would be waited for, a device never ends
        return Texts::tr("파일이 아니라 장치나 파이프입니다.");
    if (!file.open(QIODevice::ReadOnly))
        return Texts::tr("파일을 읽을 수 없습니다.");
    if (file.size() > largestFile)
        return Texts::tr("결과 파일이 너무 큽니다.");
    return objectsOf(file.read(file.size()), objects) ? QString() : Texts::tr("결과 파일(JSON)이 아닙니다.");
}

} // namespace

bool Results::read(const QString& path, QString* why)
{
    QList<QJsonObject> objects;
    const QString reason = whyUnreadable(path, objects);
    if (!reason.isEmpty()) {
        *why = QDir::toNativeSeparators(path) + "\n\n" + reason;
        return false;
    }
    m_pictures = objects;
    return true;
}

int Results::draw(CKestWnd& window, const QString& picture) const
{
    window.RemoveGraphics(tag);
    const QString name = QFileInfo(picture).fileName();
    int drawn = 0;
    for (const QJsonObject& results : m_pictures) {
        const QString file = QFileInfo(results.value(QLatin1String("file")).toString()).fileName();
        if (m_pictures.size() == 1 || file == name)
            drawn += drawLists(window, results, {});
    }
    window.ImageUpdate();
    return drawn;
}

} // namespace ormalux::viewer
