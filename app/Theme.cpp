#include "app/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>

#ifdef ORMALUX_DESKTOP_PORTAL
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#endif

namespace ormalux::viewer {

namespace {

struct RoleColor
{
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};
constexpr RoleColor colors[] = {
    {QPalette::Window, 0xFFEFEFEF, 0xFF2B2D30},
    {QPalette::WindowText, 0xFF1A1A1A, 0xFFE4E4E4},
    {QPalette::Base, 0xFFFFFFFF, 0xFF1E1F22},
    {QPalette::AlternateBase, 0xFFF5F5F5, 0xFF26282B},
    {QPalette::Text, 0xFF1A1A1A, 0xFFE4E4E4},
    {QPalette::PlaceholderText, 0xFF767676, 0xFF9A9A9A},
    {QPalette::Button, 0xFFEFEFEF, 0xFF3A3D41},
    {QPalette::ButtonText, 0xFF1A1A1A, 0xFFE4E4E4},
    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::ToolTipBase, 0xFFFFFFE1, 0xFF3A3D41},
    {QPalette::ToolTipText, 0xFF1A1A1A, 0xFFE4E4E4},
    {QPalette::Highlight, 0xFF1F6FC5, 0xFF3D7FD0},
    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Link, 0xFF0A5CB8, 0xFF7DB4F5},
    {QPalette::LinkVisited, 0xFF6A3FA0, 0xFFB79AE8},
    {QPalette::Light, 0xFFFFFFFF, 0xFF4A4D52},
    {QPalette::Midlight, 0xFFF7F7F7, 0xFF414448},
    {QPalette::Mid, 0xFFB4B4B4, 0xFF202225},
    {QPalette::Dark, 0xFF9A9A9A, 0xFF17181A},
    {QPalette::Shadow, 0xFF606060, 0xFF0C0C0D},
};

QPalette paletteOf(bool dark)
{
    QPalette palette;
    for (const RoleColor& row : colors)
        palette.setColor(row.role, QColor::fromRgb(dark ? row.dark : row.light));
    const QColor faded = dark ? QColor(0x80, 0x82, 0x86) : QColor(0x96, 0x96, 0x96);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    palette.setColor(QPalette::Disabled, QPalette::Highlight,
                     dark ? QColor(0x50, 0x52, 0x56) : QColor(0xC8, 0xC8, 0xC8));
    return palette;
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// The toolkit's own style, which outlines the boxes and circles that are to be ticked by a shade darker than
/// the window: on a dark one nobody sees them before they are ticked. Here the outline is a light one.
class OwnStyle : public QProxyStyle
{
public:
    OwnStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool box = element == PE_IndicatorCheckBox;
        if ((!box && element != PE_IndicatorRadioButton) || !isDark(option->palette) ||
            (option->state & (State_HasFocus | State_KeyboardFocusChange)) ==
                (State_HasFocus | State_KeyboardFocusChange))
            return;
        const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        const bool enabled = option->state.testFlag(State_Enabled);
        painter->setPen(option->palette.color(enabled ? QPalette::Active : QPalette::Disabled,
                                              enabled ? QPalette::PlaceholderText : QPalette::Text));
        if (box)
            painter->drawRect(outline);
        else
            painter->drawEllipse(outline);
        painter->restore();
    }
};

#ifdef ORMALUX_DESKTOP_PORTAL
/// What the desktop's settings service says: 1 dark, 2 light, 0 nothing.
int portalScheme()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return 0;
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    constexpr int patience = 300; // milliseconds at the start of the program
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, patience);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return 0;
    QVariant value = answer.arguments().constFirst();
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toInt();
}
#endif

/// The style that the system chose before any other was set.
const QString& systemStyle()
{
    static const QString name = QApplication::style()->objectName();
    return name;
}

void setStyle(const QString& name)
{
    QApplication::setStyle(QStyleFactory::create(name));
}

void setOwnStyle()
{
    if (!dynamic_cast<OwnStyle*>(QApplication::style()))
        QApplication::setStyle(new OwnStyle);
}

} // namespace

bool systemIsDark()
{
#ifdef _WIN32
    const QSettings personal(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\"
                       "Themes\\Personalize"),
        QSettings::NativeFormat);
    return personal.value(QStringLiteral("AppsUseLightTheme"), 1).toInt() == 0;
#else
#ifdef ORMALUX_DESKTOP_PORTAL
    if (const int scheme = portalScheme())
        return scheme == 1;
#endif
    return isDark(QApplication::style()->standardPalette());
#endif
}

void applyTheme(const QString& name)
{
    const QString own = systemStyle();
    if (name == QLatin1String("system")) {
        if (dynamic_cast<OwnStyle*>(QApplication::style()))
            setStyle(own);
        QApplication::setPalette(QPalette());
        const bool dark = systemIsDark();
        if (dark == isDark(QApplication::palette()))
            return;
    }
    const bool dark = name == QLatin1String("dark") || (name == QLatin1String("system") && systemIsDark());
    setOwnStyle();
    QApplication::setPalette(paletteOf(dark));
}

} // namespace ormalux::viewer
