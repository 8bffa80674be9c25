#include "app/Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace ormalux::viewer {

namespace {

constexpr int largestWindow = 16384;

/// The whole numbers between separators; empty when anything else stands there.
std::vector<int> numbers(const std::string& text, const char* separator)
{
    std::vector<int> found;
    const QStringList parts = QString::fromStdString(text).split(QLatin1String(separator));
    for (const QString& part : parts) {
        bool ok = false;
        found.push_back(part.toInt(&ok));
        if (!ok)
            return {};
    }
    return found;
}

void setSize(Options& options, const std::string& text)
{
    const std::vector<int> sides = numbers(text, "x");
    if (sides.size() != 2 || *std::min_element(sides.begin(), sides.end()) < 1 ||
        *std::max_element(sides.begin(), sides.end()) > largestWindow)
        throw CLI::ValidationError("--size", text + " is not WxH with sides of 1 to 16384");
    options.size = {sides[0], sides[1]};
}

void setRegion(Options& options, const std::string& text)
{
    const std::vector<int> ends = numbers(text, ",");
    if (ends.size() != 4 || *std::min_element(ends.begin(), ends.end()) < 0)
        throw CLI::ValidationError("--roi", text + " is not L,T,R,B in pixels of the picture");
    const auto [left, right] = std::minmax(ends[0], ends[2]);
    const auto [top, bottom] = std::minmax(ends[1], ends[3]);
    options.region = CRect{left, top, right, bottom};
}

void setZoom(Options& options, const std::string& text)
{
    bool ok = false;
    const double factor = text == "fit" ? 0 : QString::fromStdString(text).toDouble(&ok);
    if (text != "fit" && !(ok && factor > 0 && factor <= 25))
        throw CLI::ValidationError("--zoom", text + " is neither fit nor a factor up to 25");
    options.zoom = factor;
}

QString fromUtf8(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace

Options parseOptions(const QStringList& arguments)
{
    Options options;
    CLI::App program{"Ormalux's viewer: looks at pictures, measures in them and tries tools on them.",
                     "ormalux-view"};
    program.allow_windows_style_options(false); // a slash begins a path on every system
    program.footer("Exit code: 0 done, 2 bad usage or input.");
    program.set_version_flag("--version", "ormalux-view " ORMALUX_VERSION);
    program.get_formatter()->column_width(34);

    std::vector<std::string> pictures;
    std::string grab, size, zoom, region, overlays, language, theme;
    program.add_option("IMAGE", pictures, "Pictures to page through: BMP, PNG, JPEG, TIFF");
    program.add_option("--grab", grab, "Render the window to a PNG without a display, and end")
        ->type_name("OUT.png");
    program.add_option("--size", size, "Size of the window")->type_name("WxH");
    program.add_option("--zoom", zoom, "fit, or a factor: 1 shows pixel by pixel, 25 is the largest")
        ->type_name("FACTOR");
    program.add_option("--roi", region, "The region of interest in pixels, both corners inclusive")
        ->type_name("L,T,R,B");
    program.add_option("--overlays", overlays, "Draw results: what 'ormalux ... --json' printed")
        ->type_name("FILE.json");
    program.add_option("--lang", language, "Language of the texts")
        ->type_name("ko|en")
        ->check(CLI::IsMember({"ko", "en"}).description(""));
    program.add_option("--theme", theme, "Colours of the window")
        ->type_name("system|light|dark")
        ->check(CLI::IsMember({"system", "light", "dark"}).description(""));

    try {
        std::vector<std::string> reversed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            reversed.push_back(argument->toStdString());
        program.parse(std::move(reversed));
        if (program.count("--size"))
            setSize(options, size);
        if (program.count("--zoom"))
            setZoom(options, zoom);
        if (program.count("--roi"))
            setRegion(options, region);
        if (program.count("--grab") && grab.empty())
            throw CLI::ValidationError("--grab", "needs a file");
    } catch (const CLI::ParseError& error) {
        std::ostringstream out, err;
        options.exit = program.exit(error, out, err) == 0 ? Done : BadInput;
        options.text = fromUtf8(*options.exit == Done ? out.str() : "ormalux-view: " + err.str());
        return options;
    }
    for (const std::string& picture : pictures)
        options.pictures << fromUtf8(picture);
    options.grab = fromUtf8(grab);
    options.overlays = fromUtf8(overlays);
    options.language = fromUtf8(language);
    options.theme = fromUtf8(theme);
    return options;
}

} // namespace ormalux::viewer
