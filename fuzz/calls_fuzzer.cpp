#include "fuzz/FuzzInput.h"
#include "image/VisionImage.h"
#include "image/WorkPool.h"
#include "measure/EdgeMeasure.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

/// What a sequence of calls works on.
struct Bench
{
    FuzzInput& in;
    CKestImage image;
    CKestImage other;
    std::vector<std::uint8_t> lent; // what linked images borrow
    std::vector<std::uint8_t> pattern;
    CMatchSrcArray sources;
    CMatchResultArray results;
    CBlobRectArray blobs;
    CPixelArray pixels;
    CPointArrayArray lists;
    CPointArray points;

    int at() { return in.coordinate(); }
    std::uint8_t level() { return in.byte(); }
    int extent() { return in.below(48); }
    std::vector<std::uint8_t> bytes(std::size_t count)
    {
        std::vector<std::uint8_t> made(count);
        std::uint8_t value = in.byte();
        const std::uint8_t step = in.byte();
        for (auto& b : made)
            b = value = std::uint8_t(value * 5 + step);
        return made;
    }
    void forgetResults()
    {
        results.RemoveAll();
        blobs.RemoveAll();
        pixels.RemoveAll();
        lists.RemoveAll();
        points.RemoveAll();
    }
};

using Call = void (*)(Bench&);

std::string filePath()
{
    static const std::string path = (std::filesystem::temp_directory_path() /
                                     ("ormalux-calls-" + std::to_string(std::uintptr_t(&filePath))))
                                        .string();
    return path;
}

CEdgeSettings edgeSettings(Bench& b)
{
    return {CEdgePolarity(b.in.below(3)), CEdgeSelect(b.in.below(4)), double(b.in.below(64)),
            b.in.below(40) / 8.0, b.in.below(40)};
}

const Call pixelCalls[] = {
    [](Bench& b) { b.image.SetImagePtr(b.extent(), b.extent()); },
    [](Bench& b) { b.image.SetImagePtr(-b.extent(), b.at() | INT_MIN); },
    [](Bench& b) {
        const int w = b.extent(), h = b.extent();
        b.image.SetImagePtr(w, h, b.bytes(std::size_t(w) * h).data());
    },
    [](Bench& b) {
        const int w = b.extent(), h = b.extent(), bits = 8 * b.in.below(5);
        static constexpr const char* names[] = {"R", "G", "B", "RGB", "RG", "RB", "GB", "", nullptr};
        b.image.SetImagePtr(w, h, bits, b.bytes(std::size_t(w) * h * 4).data(), names[b.in.below(9)]);
    },
    [](Bench& b) {
        const int w = b.extent(), h = b.extent();
        b.image.SetEmpty(); // before what it may have borrowed goes
        b.lent = b.bytes(std::size_t(w) * h);
        b.image.SetImagePtrLink(w, h, b.lent.data());
    },
    [](Bench& b) { b.image.SetImagePtr(b.extent(), b.extent(), nullptr); },
    [](Bench& b) { b.other = b.image; },
    [](Bench& b) { b.image = b.other; },
    [](Bench& b) { b.other = CKestImage(b.image); },
    [](Bench& b) { b.image.SetEmpty(); },
    [](Bench& b) { b.image.SetPixel(b.at(), b.at(), b.image.GetPixel(b.at(), b.at())); },
    [](Bench& b) { delete[] b.image.GetImagePtr(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) { delete b.image.GetImage(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) { b.image.SetROIPlacement(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) { b.image.Marking(b.at(), b.at(), b.at(), b.at(), b.level()); },
    [](Bench& b) { b.image.Marking(b.level(), b.level(), b.level()); },
    [](Bench& b) { b.image.MarkingDiffer(b.other, b.level(), b.at()); },
    [](Bench& b) { b.image.Offset(b.at(), b.at()); },
    [](Bench& b) { b.image + b.other; },
    [](Bench& b) { b.image - b.other; },
    [](Bench& b) { b.image.PaintImage(nullptr, CRect(b.at(), b.at(), b.at(), b.at())); },
    [](Bench& b) { b.image.SaveImage(filePath().c_str()); },
    [](Bench& b) { b.image.LoadImage(filePath().c_str()); },
};

const Call operationCalls[] = {
    [](Bench& b) { b.image.Invert(); },
    [](Bench& b) { b.image.Light(b.at(), b.at()); },
    [](Bench& b) { b.image.Gamma(float(b.in.angle())); },
    [](Bench& b) { b.image.HistoEqualize(); },
    [](Bench& b) { b.image.HistoLog(); },
    [](Bench& b) { b.image.HistoRoot(); },
    [](Bench& b) { b.image.HistoNormalize(); },
    [](Bench& b) { b.image.HistoStretch(); },
    [](Bench& b) { b.image.AutoContrast(); },
    [](Bench& b) { b.image.Threshold(b.at()); },
    [](Bench& b) { b.image.DoubleThreshold(b.at(), b.at(), b.level()); },
    [](Bench& b) { b.image.AdaptiveThreshold(b.level()); },
    [](Bench& b) { b.image.GetAutoThreshold("HVAX"[b.in.below(4)], b.at()); },
    [](Bench& b) { b.image.GetAutoThreshold(b.at(), b.at(), b.at(), b.at(), "HVAX"[b.in.below(4)], b.at()); },
    [](Bench& b) {
        long histogram[256] = {};
        b.image.Histogram(b.in.flag() ? histogram : nullptr);
    },
    [](Bench& b) { b.image.GetGrayLevelAverage(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) { b.image.GetGrayLevelCount(b.level()); },
    [](Bench& b) {
        long cx = 0, cy = 0;
        b.image.GetGravityCenter(b.at(), b.at(), b.at(), b.at(), b.at(), b.level(), &cx,
                                 b.in.flag() ? &cy : nullptr);
    },
    [](Bench& b) { b.image.GetPixelArray(b.level(), b.level(), b.pixels); },
    [](Bench& b) { b.image.GetPixelArray(b.at(), b.at(), b.at(), b.at(), b.level(), b.level(), b.pixels); },
    [](Bench& b) {
        const int size = b.in.below(12);
        std::vector<long> kernel(std::size_t(size) * size + 1);
        for (long& entry : kernel)
            entry = b.in.empty() ? 1 : b.at();
        b.image.Filter(b.in.flag() || size > 0 ? kernel.data() : nullptr, size, b.at(), b.at(),
                       b.in.below(3));
    },
    [](Bench& b) {
        static constexpr void (CKestImage::*filters[])() = {
            &CKestImage::Sharpen,    &CKestImage::Blur,   &CKestImage::Soften,  &CKestImage::Gassian3x3,
            &CKestImage::Gassian5x5, &CKestImage::Emboss, &CKestImage::Edge,    &CKestImage::Laplacian,
            &CKestImage::Erode,      &CKestImage::Dilate, &CKestImage::OpenBox, &CKestImage::CloseBox};
        (b.image.*filters[b.in.below(12)])();
    },
    [](Bench& b) { b.image.Rotate(b.at(), b.at(), b.in.angle(), b.level()); },
    [](Bench& b) {
        static constexpr void (CKestImage::*turns[])() = {&CKestImage::Rotate90L, &CKestImage::Rotate90R,
                                                          &CKestImage::Rotate180, &CKestImage::RotateHorzFlip,
                                                          &CKestImage::RotateVertFlip};
        (b.image.*turns[b.in.below(5)])();
    },
};

const Call measureCalls[] = {
    [](Bench& b) { b.image.GetBlobList(b.at(), b.at(), b.at(), b.at(), b.at(), b.blobs); },
    [](Bench& b) { b.image.GetBlobList(b.at(), b.level(), 1, 99, 1, 99, b.blobs); },
    [](Bench& b) {
        b.image.GetBlobList(b.at(), b.at(), b.at(), b.at(), b.at(), b.in.flag() ? 255 : 0, b.at(), b.at(),
                            b.at(), b.at(), b.blobs);
    },
    [](Bench& b) {
        b.image.GetBlobList(b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.blobs);
    },
    [](Bench& b) { b.image.GetBlobList(b.at(), b.at(), b.at(), b.at(), b.level(), 1, 99, 1, 99, b.lists); },
    [](Bench& b) {
        b.image.GetGrayRangeBlobList(b.level(), b.level(), b.at(), b.at(), b.at(), b.at(), b.blobs);
    },
    [](Bench& b) { b.image.GetLinePixelArray(b.at(), b.at(), b.at(), b.at(), b.level(), 255, b.pixels); },
    [](Bench& b) { b.image.GetCyclePixelArray(b.at(), b.at(), b.at() % 4096, 0, b.level(), b.pixels); },
    [](Bench& b) {
        b.image.GetEllipsePixelArray(b.at(), b.at(), b.at() % 512, b.at() % 512, 0, b.level(), b.pixels);
    },
    [](Bench& b) {
        b.image.GetArcPixelArray(b.at(), b.at(), b.at(), b.extent(), b.extent(), 0, 255, b.pixels);
    },
    [](Bench& b) { b.image.GetPointGauge(b.at(), b.at(), b.at(), b.at(), b.in.below(3), b.pixels); },
    [](Bench& b) {
        long x = 0, y = 0;
        b.image.GetPointGauge(b.at(), b.at(), b.at(), b.at(), b.in.below(3), b.at(), &x, &y);
    },
    [](Bench& b) {
        _stLineGaugeResult result{};
        b.image.GetLineGauge(b.at(), b.at(), b.at(), b.at(), b.in.below(3), b.in.below(3), b.at(), result);
    },
    [](Bench& b) {
        std::vector<CEdgePoint> edges;
        b.image.GetEdges(b.at() / 4.0, b.at() / 4.0, b.at() / 4.0, b.at() / 4.0, edgeSettings(b), edges);
    },
    [](Bench& b) {
        CEdgeLine line{};
        const CEdgeBox box{b.at() / 4.0, b.at() / 4.0, b.at() / 4.0,
                           b.at() / 4.0, b.at() / 4.0, b.in.below(200)};
        b.image.GetEdgeLine(box, edgeSettings(b), line);
    },
    [](Bench& b) {
        CEdgeCircle circle{};
        const CEdgeRing ring{b.at() / 4.0, b.at() / 4.0, b.at() / 4.0, b.at() / 4.0, b.in.below(200)};
        b.image.GetEdgeCircle(ring, edgeSettings(b), circle);
    },
    [](Bench& b) {
        _stLineGaugeResult result{};
        b.image.GetLineGauge(b.at(), b.at(), b.at(), b.at(), b.in.below(3), b.in.below(3), b.at(), b.at(),
                             result);
    },
    [](Bench& b) { CKestImage::Distance(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) { CKestImage::GetAngle(b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) {
        int x = 0, y = 0;
        CKestImage::RotatePoint(b.at(), b.at(), b.in.angle(), b.at(), b.at(), &x, &y);
    },
    [](Bench& b) { CKestImage::PtInRectangle(b.at(), b.at(), b.at(), b.at(), b.at(), b.at()); },
    [](Bench& b) {
        const POINT corners[] = {{b.at(), b.at()}, {b.at(), b.at()}, {b.at(), b.at()}};
        CKestImage::PtInPolygon(corners, unsigned(b.in.below(4)), {b.at(), b.at()});
    },
    [](Bench& b) { CKestImage::PtInCycle(b.at(), b.at(), b.at() % 4096, b.at(), b.at()); },
    [](Bench& b) { CKestImage::GetCycleSegment(b.at(), b.at(), b.at() % 4096, b.points); },
    [](Bench& b) { CKestImage::GetEllipseSegment(b.at(), b.at(), b.at() % 512, b.at() % 512, b.points); },
    [](Bench& b) {
        CKestImage::IntersectLine(b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.at(), b.at());
    },
};

void setSources(Bench& b)
{
    const int width = b.in.below(16), height = b.in.below(16);
    b.pattern = b.bytes(std::size_t(width) * height);
    _stMatchSource source;
    source.key = b.in.flag() ? 255 : 0;
    source.width = width;
    source.height = height;
    for (auto& p : b.pattern) {
        p = p > 127 ? 255 : 0;
        ++(p ? source.white_count : source.black_count);
    }
    source.data = b.pattern.data();
    b.sources.SetCount(b.in.below(4));
    for (int i = 0; i < b.sources.GetCount(); ++i)
        b.sources.GetAt(i) = source;
}

const Call matchCalls[] = {
    setSources,
    [](Bench& b) { b.image.Match(b.at(), b.sources, b.results); },
    [](Bench& b) { b.image.Match(b.at(), b.at(), b.at(), b.at(), b.at(), b.sources, b.results); },
    [](Bench& b) {
        const int low = b.level();
        b.image.MatchThresholdRange(b.at(), b.at(), b.at(), b.at(), low, low + b.in.below(30) - 5, b.sources,
                                    b.results);
    },
    [](Bench& b) { b.image.OcrMatch(b.at(), b.at(), b.at(), b.at(), b.at(), b.sources, b.results); },
    [](Bench& b) {
        b.image.OcrMatch(b.at(), b.at(), b.at(), b.at(), b.at(), 1, 99, 1, 99, b.sources, b.results);
    },
    [](Bench& b) {
        b.blobs.Add(b.at(), b.at(), b.at(), b.at(), b.at());
        b.image.OcrMatch(b.at(), b.blobs, b.sources, b.results);
    },
};

template <std::size_t N>
Call oneOf(const Call (&calls)[N], int choice)
{
    return calls[std::size_t(choice) % N];
}

Call chosen(int group, int choice)
{
    switch (group % 8) {
    case 0:
    case 1:
    case 2:
        return oneOf(pixelCalls, choice);
    case 3:
    case 4:
        return oneOf(operationCalls, choice);
    case 5:
    case 6:
        return oneOf(measureCalls, choice);
    default:
        return oneOf(matchCalls, choice);
    }
}

} // namespace

/// Any sequence of calls with any arguments: no call may touch memory that is not its own, hang, or throw.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    Bench bench{in, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}};
    static constexpr int bandCounts[] = {1, 2, 3, 7};
    ormalux::setBandCount(bandCounts[in.below(4)]);
    pixelCalls[2](bench);
    for (int calls = 0; calls < 40 && !in.empty(); ++calls) {
        const int group = in.byte();
        chosen(group, in.byte())(bench);
        bench.forgetResults();
    }
    return 0;
}
