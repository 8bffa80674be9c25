#pragma once

#include "array/MatchArray.h"
#include "image/GrayView.h"
#include "match/Score.h"
#include "measure/BlobFinder.h"

#include <optional>

namespace ormalux {

/// The part of the image with the inclusive corners, which are put in order; the whole image when it leaves
/// it.
ConstGrayView searchedArea(const ConstGrayView& image, int left, int top, int right, int bottom);

/// The one source that pattern match uses: the first, or one of zeros when there is none. Nothing for
/// several.
std::optional<_stMatchSource> patternSource(CMatchSrcArray& sources);

/// A source made ready for one image: its bits, and which blobs are candidates.
class Pattern
{
public:
    /// False when memory is short.
    bool prepare(const _stMatchSource& source, const ConstGrayView& image);

    const Templates& templates() const { return m_templates; }
    std::uint8_t key() const { return m_key; }
    /// The source's extents, 10 pixels less to 10 pixels more.
    const BlobSizes& sizes() const { return m_sizes; }

private:
    Templates m_templates;
    BlobSizes m_sizes{1, 0, 1, 0};
    std::uint8_t m_key = 0;
};

/// Scores the boxes of one image at one threshold. One thread at a time.
class PatternScorer
{
public:
    /// False when memory is short.
    bool prepare(const Pattern& pattern) { return m_box.prepare(pattern.templates()); }
    void begin(const ConstGrayView& image, int threshold);
    /// The yields of a box that a search for the pattern's colour at this threshold found.
    Yields score(const Pattern& pattern, const Blob& blob);

private:
    BoxBits m_box;
    ConstGrayView m_image;
    int m_threshold = 0;
    std::optional<Yields> m_single; // every box of one pixel holds an object pixel, so all score alike
};

/// Appends every candidate in the order of the blob search with its yields, or nothing when memory is short.
/// Returns the array's count, 0 when there is no candidate.
int matchPattern(const ConstGrayView& image, int threshold, const _stMatchSource& source,
                 CMatchResultArray& results);

} // namespace ormalux
