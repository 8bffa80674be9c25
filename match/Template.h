#pragma once

#include "array/Records.h"
#include "match/kernels/ScoreKernels.h"
#include "measure/Growable.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// What the score of a template needs besides its bits.
struct TemplateFacts
{
    std::uint8_t key;
    float blackCount; ///< divisors as the record gives them, whatever the pixels are
    float whiteCount;
    float area;
};

/// Match sources, packed into bits once per call: rows of whole words, or, where no source is wider than a
/// word, rows as close as whole bytes let them. Pixels other than 0 and 255 are neither white nor black, and
/// a source without data has no pixels.
class Templates
{
public:
    /// Packs of every source the part that a box of at most the given size can meet. False when memory is
    /// short.
    bool pack(std::span<const _stMatchSource> sources, int mostWidth, int mostHeight);

    std::size_t count() const { return m_count; }
    const kernels::BitPlanes* planes() const { return m_planes.data(); }
    const TemplateFacts& facts(std::size_t index) const { return m_facts[index]; }

    /// The largest stride in bytes and number of rows of any template.
    std::size_t stride() const { return m_stride; }
    std::size_t rows() const { return m_rows; }

private:
    Growable<kernels::BitPlanes> m_planes;
    Growable<TemplateFacts> m_facts;
    Growable<std::uint64_t> m_words;
    std::size_t m_count = 0;
    std::size_t m_stride = 8;
    std::size_t m_rows = 0;
};

/// The pixels of one box, binarised and packed.
class BoxBits
{
public:
    /// Makes room for what the templates can meet of a box. False when memory is short.
    bool prepare(const Templates& templates);
    /// Packs the box whose pixels are given: white where p > threshold, else black.
    void pack(const std::uint8_t* pixels, std::ptrdiff_t stride, int width, int height, int threshold);

    const kernels::BitPlanes& planes() const { return m_planes; }

private:
    Growable<std::uint64_t> m_words;
    kernels::BitPlanes m_planes{nullptr, nullptr, 8, 0, 0};
};

} // namespace ormalux
