#pragma once

#include "array/Records.h"
#include "tests/support/BlobReference.h"

#include <vector>

/// Matching as it reads: candidates from the walk, pixels compared one by one.
namespace testing_support {

struct Scored
{
    int key, left, top, right, bottom, pixels;
    float black, white;
    int threshold;

    float average() const { return (white + black) * 0.5f; }
    bool operator==(const Scored&) const = default;
};

inline Scored score(const ormalux::ConstGrayView& image, int threshold, const _stMatchSource& s,
                    const _stBlobRect& b)
{
    const std::int64_t w = std::int64_t(b.right) - b.left + 1, h = std::int64_t(b.bottom) - b.top + 1;
    int blackHits = 0, whiteHits = 0;
    for (std::int64_t y = 0; s.data && y < s.height && y < h; ++y)
        for (std::int64_t x = 0; x < s.width && x < w; ++x) {
            const int p = image.row(int(b.top + y))[b.left + x] > threshold ? 255 : 0;
            const int t = s.data[y * s.width + x];
            blackHits += t == p && t == 0;
            whiteHits += t == p && t == 255;
        }
    const float black = s.black_count == 0 ? 1.0f : float(blackHits) / float(s.black_count);
    const float white = s.white_count == 0 ? 1.0f : float(whiteHits) / float(s.white_count);
    const std::int64_t a = w * h, area = std::int64_t(s.width) * s.height;
    const float ratio = a <= area ? float(a) / float(area) : float(area) / float(a);
    return {s.key, b.left, b.top, b.right, b.bottom, b.pixel_count, black * ratio, white * ratio, 0};
}

inline std::vector<Scored> matchReference(const ormalux::ConstGrayView& image, int threshold,
                                          const _stMatchSource& s)
{
    std::vector<Scored> found;
    const ormalux::BlobSizes sizes{s.width - 10LL, s.width + 10LL, s.height - 10LL, s.height + 10LL};
    for (const WalkedBlob& b :
         walkBlobs(image, {0, 0, image.width, image.height}, ormalux::levelsOfColor(threshold, s.key), sizes))
        found.push_back(
            score(image, threshold, s, {b.left, b.top, b.right, b.bottom, b.pixels, 0, 0, {}, {}}));
    return found;
}

/// The last of those with the highest average; what a stable ascending sort leaves behind all others.
inline const Scored* bestOf(const std::vector<Scored>& scored)
{
    const Scored* best = nullptr;
    for (const Scored& s : scored)
        if (!best || s.average() >= best->average())
            best = &s;
    return best;
}

} // namespace testing_support
