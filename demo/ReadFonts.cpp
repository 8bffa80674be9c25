// ormalux-read-fonts [FAMILY...]: draws 120 characters of each font and reads them with ReadCharacters, clean
// and disturbed; the sources are cut from the clean characters, one each. Tells how many are read rightly,
// rejected and read wrongly.

#include "array/MatchSourceFile.h"
#include "image/VisionImage.h"
#include "match/CharacterReading.h"
#include "match/MiddleLevel.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr const char* alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr int count = 120;
constexpr int columns = 24;
constexpr int cell = 40;
constexpr int fontPixels = 28;
constexpr int ink = 60;
constexpr int paper = 190;

char characterAt(int i)
{
    return alphabet[i * 7 % 36];
}

/// Dark characters in rows, one a cell.
CKestImage drawn(const QString& family)
{
    QImage page(columns * cell, count / columns * cell, QImage::Format_Grayscale8);
    page.fill(QColor(paper, paper, paper));
    QFont font(family);
    font.setPixelSize(fontPixels);
    QPainter painter(&page);
    painter.setFont(font);
    painter.setPen(QColor(ink, ink, ink));
    for (int i = 0; i < count; ++i)
        painter.drawText(QRect(i % columns * cell, i / columns * cell, cell, cell), Qt::AlignCenter,
                         QString(QLatin1Char(characterAt(i))));
    painter.end();
    CKestImage image(page.width(), page.height());
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            image.SetPixel(x, y, page.constScanLine(y)[x]);
    return image;
}

/// The box of the ink in the cell.
_stBlobRect boxOf(const CKestImage& image, int i, int threshold)
{
    _stBlobRect box{INT_MAX, INT_MAX, -1, -1, 0, 0, 0, {0, 0}, {0, 0, 0, 0}};
    for (int y = i / columns * cell; y < (i / columns + 1) * cell; ++y)
        for (int x = i % columns * cell; x < (i % columns + 1) * cell; ++x)
            if (image.GetPixel(x, y) <= threshold) {
                box.left = std::min<LONG>(box.left, x);
                box.top = std::min<LONG>(box.top, y);
                box.right = std::max<LONG>(box.right, x);
                box.bottom = std::max<LONG>(box.bottom, y);
            }
    return box;
}

CMatchSrcArray taught(const CKestImage& clean, int threshold)
{
    const std::string file = (std::filesystem::temp_directory_path() / "ormalux-font.ocs").string();
    CMatchSrcArray sources;
    std::string known;
    for (int i = 0; i < count; ++i) {
        if (known.find(characterAt(i)) != std::string::npos)
            continue;
        known += characterAt(i);
        const _stBlobRect box = boxOf(clean, i, threshold);
        CKestImage part(clean);
        part.SetROIPlacement(box.left, box.top, box.right, box.bottom);
        part.Threshold(threshold);
        _stMatchSource source{};
        source.key = static_cast<unsigned char>(characterAt(i));
        source.width = part.GetWidth();
        source.height = part.GetHeight();
        source.data = part.view().pixels;
        ormalux::writeMatchSource(file.c_str(), source);
        sources.Add(file.c_str());
    }
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return sources;
}

template <class Change>
CKestImage changed(const CKestImage& clean, Change change)
{
    CKestImage image(clean);
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(x, y, std::clamp(change(clean.GetPixel(x, y)), 0, 255));
    return image;
}

CKestImage noisy(const CKestImage& clean, double sigma, unsigned seed)
{
    std::mt19937 engine(seed);
    std::normal_distribution<double> noise(0, sigma);
    return changed(clean, [&](int level) { return int(std::lround(level + noise(engine))); });
}

struct Score
{
    int right = 0, rejected = 0, wrong = 0, others = 0;
    double leastYield = 1, leastMargin = 1, seconds = 0;
};

/// Every character is looked for in its cell.
Score scoreOf(const std::vector<CCharacterReading>& readings)
{
    Score score;
    std::vector<int> seen(count);
    for (const CCharacterReading& r : readings) {
        const int i = (r.top + r.bottom) / 2 / cell * columns + (r.left + r.right) / 2 / cell;
        if (seen[std::size_t(i)]++) {
            ++score.others;
            continue;
        }
        score.rejected += r.rejected;
        score.right += !r.rejected && r.key == characterAt(i);
        score.wrong += !r.rejected && r.key != characterAt(i);
        score.leastYield = std::min(score.leastYield, r.best_yield);
        score.leastMargin = std::min(score.leastMargin, r.margin);
    }
    return score;
}

Score read(const CKestImage& image, CMatchSrcArray& sources, bool cutBoxes)
{
    CReadingSettings settings;
    settings.threshold =
        ormalux::middleLevel(ormalux::countLevels(image.view()), image.GetAutoThreshold('A', 1));
    std::vector<CCharacterReading> readings;
    const auto start = std::chrono::steady_clock::now();
    if (cutBoxes) {
        CBlobRectArray boxes;
        for (int i = 0; i < count; ++i) {
            _stBlobRect box = boxOf(image, i, settings.threshold);
            ++(i % 2 ? box.left : box.top);
            boxes.Add(box);
        }
        image.ReadCharacters(boxes, settings, sources, readings);
    } else {
        image.ReadCharacters(settings, sources, readings);
    }
    Score score = scoreOf(readings);
    score.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return score;
}

/// The left column of every character becomes paper.
CKestImage columnCut(const CKestImage& clean, int threshold)
{
    CKestImage image(clean);
    for (int i = 0; i < count; ++i) {
        const _stBlobRect box = boxOf(clean, i, threshold);
        for (int y = box.top; y <= box.bottom; ++y)
            for (int x = box.left - 1; x <= box.left; ++x)
                image.SetPixel(x, y, paper);
    }
    return image;
}

void print(const char* what, const Score& s)
{
    std::printf("  %-22s %3d right, %2d rejected, %2d wrong, %d others; least yield %.3f, margin %.3f; %.0f "
                "characters a second\n",
                what, s.right, s.rejected, s.wrong, s.others, s.leastYield, s.leastMargin, count / s.seconds);
}

void readFont(const QString& family)
{
    const CKestImage clean = drawn(family);
    const int threshold = clean.GetAutoThreshold('A', 1);
    CMatchSrcArray sources = taught(clean, threshold);
    std::printf("%s, %d sources, threshold %d\n", qPrintable(QFontInfo(QFont(family)).family()),
                sources.GetCount(), threshold);
    print("clean", read(clean, sources, false));
    print("levels up 40", read(changed(clean, [](int level) { return level + 40; }), sources, false));
    print("levels down 40", read(changed(clean, [](int level) { return level - 40; }), sources, false));
    print("boxes cut", read(clean, sources, true));
    print("characters cut", read(columnCut(clean, threshold), sources, false));
    for (const double sigma : {6.0, 15.0})
        for (const unsigned seed : {1u, 2u, 3u})
            print(("noise " + std::to_string(int(sigma))).c_str(),
                  read(noisy(clean, sigma, seed), sources, false));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList families = application.arguments().mid(1);
    if (families.isEmpty())
        families = {"DejaVu Sans", "DejaVu Sans Mono", "DejaVu Serif", "NanumGothic", "NanumMyeongjo"};
    for (const QString& family : families)
        readFont(family);
    return 0;
}
