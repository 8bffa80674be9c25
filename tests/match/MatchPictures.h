#pragma once

#include "array/MatchArray.h"
#include "image/VisionImage.h"
#include "tests/match/MatchReference.h"

#include <random>

namespace testing_support {

/// Blobs of many sizes with soft edges and noise.
inline CKestImage blobPicture(int width, int height, unsigned seed)
{
    std::mt19937 random(seed);
    CKestImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.SetPixel(x, y, std::uint8_t(70 + random() % 20));
    for (int i = 0; i < width * height / 400; ++i) {
        const int x0 = int(random() % unsigned(width)), y0 = int(random() % unsigned(height));
        const int w = 1 + int(random() % 30), h = 1 + int(random() % 30), level = 60 + int(random() % 150);
        for (int y = y0; y < std::min(y0 + h, height); ++y)
            for (int x = x0; x < std::min(x0 + w, width); ++x)
                if (random() % 16 != 0)
                    image.SetPixel(x, y, std::uint8_t(level + int(random() % 30)));
    }
    return image;
}

/// A source with its pixels.
struct Source
{
    _stMatchSource record{};
    std::vector<std::uint8_t> pixels;
};

inline Source randomSource(int width, int height, int key, unsigned seed)
{
    std::mt19937 random(seed);
    Source source;
    source.pixels.resize(std::size_t(width) * height);
    for (auto& p : source.pixels)
        p = random() % 20 == 0 ? std::uint8_t(random() % 256) : random() % 3 == 0 ? 0 : 255;
    source.record.key = std::uint8_t(key);
    source.record.width = width;
    source.record.height = height;
    source.record.black_count = LONG(std::count(source.pixels.begin(), source.pixels.end(), 0));
    source.record.white_count = LONG(std::count(source.pixels.begin(), source.pixels.end(), 255));
    source.record.data = source.pixels.data();
    return source;
}

inline void add(CMatchSrcArray& sources, const Source& source)
{
    sources.appendForOverwrite(1)[0] = source.record;
}

inline std::vector<Scored> listed(CMatchResultArray& results)
{
    std::vector<Scored> list;
    for (const _stMatchResult& r : results.records())
        list.push_back({r.key, r.left, r.top, r.right, r.bottom, r.pixel_count, r.black_yield, r.white_yield,
                        r.threshold});
    return list;
}

} // namespace testing_support
