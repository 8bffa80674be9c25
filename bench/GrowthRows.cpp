// How the cost grows with the picture: the same operations on 0.3, 5, 20 and 100 megapixels. The limit is a
// copy of the same bytes; a linear operation keeps its share of it.

#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"

#include <cstring>
#include <memory>

namespace {

struct Growing
{
    const char* name;
    void (*run)(CKestImage& image);
};

const Growing operations[] = {
    {"growth: Threshold", [](CKestImage& image) { image.Threshold(128); }},
    {"growth: Histogram",
     [](CKestImage& image) {
         long counts[256] = {};
         image.Histogram(counts);
         bench::keep(counts);
     }},
    {"growth: Blur", [](CKestImage& image) { image.Blur(); }},
    {"growth: Erode", [](CKestImage& image) { image.Erode(); }},
    {"growth: Rotate180", [](CKestImage& image) { image.Rotate180(); }},
    {"growth: GetAutoThreshold 'A'", [](CKestImage& image) { bench::keep(image.GetAutoThreshold('A', 1)); }},
    {"growth: GetBlobList",
     [](CKestImage& image) {
         CBlobRectArray blobs;
         image.GetBlobList(100, 255, 2, 100000, 2, 100000, blobs);
         bench::keep(blobs);
     }},
};

constexpr bench::Extent sizes[] = {
    {"0.3 MP", 640, 480}, {"5 MP", 2448, 2048}, {"20 MP", 5472, 3648}, {"100 MP", 11608, 8708}};

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& size : sizes) {
        // Drawn at the first use: the large ones cost memory that other rows do not need.
        const auto image = std::make_shared<CKestImage>();
        const auto copy = std::make_shared<std::vector<std::uint8_t>>();
        const auto draw = [=] {
            if (image->IsEmpty()) {
                auto pixels = bench::partsPicture(size.width, size.height);
                image->SetImagePtr(size.width, size.height, pixels.data());
                copy->resize(pixels.size());
            }
        };
        for (const Growing& operation : operations) {
            bench::Row row;
            row.operation = operation.name;
            row.size = size.name;
            row.prepare = draw;
            row.ours = [=] { operation.run(*image); };
            row.limit = [=] {
                draw();
                std::memcpy(copy->data(), image->view().pixels, copy->size());
            };
            table.push_back(row);
        }
    }
}};

} // namespace
