#include "cli/PictureTable.h"
#include "cli/pictures/Drawing.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"

#include <QGuiApplication>

#include <memory>
#include <new>

// The functions of the table: words for C around what the display's objects do.

namespace ormalux::cli {

namespace {

constexpr char noMemory[] = "memory is short";

void (*complain)(const char* message) = nullptr;

/// Keeps a text until the next call.
const char* told(std::string text)
{
    static std::string kept;
    kept = std::move(text);
    return kept.c_str();
}

/// Runs a function that returns what is wrong, empty when nothing is.
template <class Call>
const char* guarded(const Call& call)
{
    try {
        std::string why = call();
        return why.empty() ? nullptr : told(std::move(why));
    } catch (...) {
        return noMemory;
    }
}

void start(void (*complainTo)(const char* message))
{
    complain = complainTo;
    // Fonts and picture readers without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // Without a display the toolkit does not look for the system's fonts.
    if (!qEnvironmentVariableIsSet("QT_QPA_FONTDIR"))
        qputenv("QT_QPA_FONTDIR", qgetenv("WINDIR") + "/Fonts");
#endif
    // What is wrong with a picture is told by the reader, in one line that names it.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            complain(text.toUtf8().constData());
    });
    static int count = 1;
    static char name[] = "ormalux";
    static char* names[] = {name, nullptr};
    new QGuiApplication(count, names); // lives as long as the process, like the module
}

const char* whyNone(const std::uint8_t* beginning, std::size_t size)
{
    return guarded([&] { return whyNoPicture({beginning, size}).text; });
}

const char* decode(const std::uint8_t* file, std::size_t size, OrmaluxDecoded* decoded)
{
    return guarded([&] {
        PictureRefusal why;
        auto picture = std::make_unique<Picture>(decodePicture({file, size}, PaletteUse::Applied, why));
        if (picture->empty())
            return why.text;
        const PixelSource source = picture->source();
        const PictureOrigin& origin = picture->origin;
        *decoded = {{source.bits, source.width, source.height, source.stride, source.bitCount},
                    origin.bits,
                    origin.usedBits,
                    origin.pages,
                    origin.transparent,
                    picture->deep.empty() ? nullptr : picture->deep.data(),
                    picture.get()};
        picture.release(); // the caller's from here on
        return std::string();
    });
}

void release(void* owner)
{
    delete static_cast<Picture*>(owner);
}

const char* write(const char* path, const OrmaluxPixels* picture)
{
    return guarded([&] {
        std::string error;
        writePicture(
            path,
            PixelSource{picture->bits, picture->width, picture->height, picture->stride, picture->bitCount},
            &error);
        return error;
    });
}

const char* annotate(const char* path, const OrmaluxPixels* picture, const OrmaluxShape* shapes,
                     std::size_t count)
{
    return guarded([&] {
        std::string error;
        writeAnnotated(path, *picture, shapes, count, &error);
        return error;
    });
}

const char* plotHistogram(const char* path, const long* counts)
{
    return guarded([&] {
        std::string error;
        writeHistogramPlot(path, counts, &error);
        return error;
    });
}

constexpr OrmaluxPictures table{ORMALUX_VERSION, noMemory, start,    whyNone,      decode,
                                release,         write,    annotate, plotHistogram};

} // namespace

} // namespace ormalux::cli

#if defined(_WIN32)
#define ORMALUX_MODULE_EXPORT extern "C" __declspec(dllexport)
#else
#define ORMALUX_MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

ORMALUX_MODULE_EXPORT const OrmaluxPictures* ormalux_pictures()
{
    return &ormalux::cli::table;
}
