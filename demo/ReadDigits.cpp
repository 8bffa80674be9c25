// ormalux-read-digits SHEET: reads a sheet of 5,000 handwritten digits, cells of 20 x 20 in ten classes of
// 500. The first 20 of each class become sources, the rest are read with OcrMatch and with ReadCharacters.

#include "array/MatchSourceFile.h"
#include "image/VisionImage.h"
#include "match/CharacterReading.h"
#include "view/PictureReader.h"

#include <QGuiApplication>

#include <chrono>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <string>

namespace {

constexpr int cell = 20;
constexpr int columns = 100;
constexpr int rows = 50;
constexpr int perClass = columns * rows / 10;
constexpr int sourcesPerClass = 20;
constexpr int threshold = 190;

/// The box around all dark pixels of a cell; empty cells give none.
bool boxOf(const CKestImage& sheet, int index, _stBlobRect& box)
{
    const int x0 = index % columns * cell, y0 = index / columns * cell;
    box = {INT_MAX, INT_MAX, -1, -1, 0, 0, 0, {0, 0}, {0, 0, 0, 0}};
    for (int y = y0; y < y0 + cell; ++y)
        for (int x = x0; x < x0 + cell; ++x)
            if (sheet.GetPixel(x, y) <= threshold) {
                box.left = std::min(box.left, x);
                box.top = std::min(box.top, y);
                box.right = std::max(box.right, x);
                box.bottom = std::max(box.bottom, y);
                ++box.pixel_count;
            }
    return box.pixel_count > 0;
}

bool addSource(const CKestImage& sheet, const _stBlobRect& box, char character, const std::string& file,
               CMatchSrcArray& sources)
{
    CKestImage part(sheet);
    part.SetROIPlacement(box.left, box.top, box.right, box.bottom);
    part.Threshold(threshold);
    _stMatchSource source{};
    source.key = static_cast<unsigned char>(character);
    source.threshold = threshold;
    source.black_count = LONG(part.GetGrayLevelCount(0));
    source.white_count = LONG(part.GetGrayLevelCount(255));
    source.width = part.GetWidth();
    source.height = part.GetHeight();
    source.data = part.view().pixels;
    if (!ormalux::writeMatchSource(file.c_str(), source))
        return false;
    sources.Add(file.c_str());
    return true;
}

/// Reads and tells how much of it is right, and how fast.
template <class Read>
void print(const char* how, const std::string& truth, CMatchSrcArray& sources, Read read)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string text = read();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    int right = 0;
    for (std::size_t i = 0; i < std::min(text.size(), truth.size()); ++i)
        right += text[i] == truth[i];
    std::printf("%zu handwritten digits read %s with %d sources: %.1f %% right, %.0f characters a second\n",
                text.size(), how, sources.GetCount(), 100.0 * right / double(truth.size()),
                double(text.size()) / seconds);
}

int readSheet(CKestImage& sheet)
{
    sheet.Invert(); // characters are read dark on light
    const std::string file = (std::filesystem::temp_directory_path() / "ormalux-digit.ocs").string();
    CMatchSrcArray sources;
    CBlobRectArray digits;
    std::string truth;
    for (int index = 0; index < columns * rows; ++index) {
        _stBlobRect box;
        if (!boxOf(sheet, index, box))
            continue;
        const char character = char('0' + index / perClass);
        if (index % perClass < sourcesPerClass) {
            if (!addSource(sheet, box, character, file, sources))
                return 2;
        } else {
            digits.Add(box);
            truth += character;
        }
    }
    std::error_code ignored;
    std::filesystem::remove(file, ignored);

    CMatchResultArray results;
    print("exactly", truth, sources, [&] {
        sheet.OcrMatch(threshold, digits, sources, results);
        std::string read;
        for (int i = 0; i < results.GetCount(); ++i)
            read += char(results[i].key);
        return read;
    });
    CReadingSettings settings;
    settings.threshold = threshold;
    std::vector<CCharacterReading> readings;
    print("with tolerance", truth, sources, [&] {
        sheet.ReadCharacters(digits, settings, sources, readings);
        std::string read;
        for (const CCharacterReading& reading : readings)
            read += char(reading.key);
        return read;
    });
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    std::string error = "usage: ormalux-read-digits SHEET";
    ormalux::Picture picture;
    if (argc == 2)
        picture = ormalux::readPicture(argv[1], &error);
    if (picture.empty() || !picture.isGray() || picture.width != columns * cell ||
        picture.height != rows * cell) {
        std::fprintf(stderr, "%s\n",
                     error.empty() ? "not a gray sheet of 2000 x 1000 pixels" : error.c_str());
        return 2;
    }
    CKestImage sheet(picture.width, picture.height, picture.pixels.data());
    return readSheet(sheet);
}
