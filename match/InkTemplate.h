#pragma once

#include "array/Records.h"
#include "image/GrayView.h"
#include "match/kernels/InkKernels.h"
#include "measure/Growable.h"

#include <cstdint>
#include <optional>
#include <span>

namespace ormalux {

/// A box whose four sides belong to it.
struct CharacterBox
{
    int left;
    int top;
    int right;
    int bottom;

    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
};

/// Characters are pixels on one side of a threshold, templates those of one level.
struct InkLevels
{
    int threshold;
    bool bright; ///< ink is brighter than the threshold, and 255 in a template; else not brighter, and 0

    bool isInk(int level) const { return (level > threshold) == bright; }
};

/// What a template is compared by.
struct InkTemplate
{
    std::uint8_t key;
    int width;
    int height;
    std::int64_t ink; ///< number of ink pixels
    kernels::InkMask mask;
};

/// The ink of match sources. Sources without pixels are left out.
class InkTemplates
{
public:
    /// False when memory is short.
    bool pack(std::span<const _stMatchSource> sources, const InkLevels& levels);
    std::span<const InkTemplate> all() const { return {m_templates.data(), m_count}; }

private:
    Growable<InkTemplate> m_templates;
    Growable<std::uint8_t> m_bytes;
    std::size_t m_count = 0;
};

/// The pixels of one box as shares of ink, 0 to 255, with a ring of one pixel around it and ground beyond.
class InkBox
{
public:
    /// Takes the pixels of a box that lies in the image. A quarter of the step between the mean levels of
    /// ink and ground is cut off at both ends: that is where most of the noise lies. False when memory is
    /// short.
    bool take(const ConstGrayView& image, const CharacterBox& box, const InkLevels& levels, int shift);

    /// How well a template agrees at its best place within the shift, middle on middle: the share of the
    /// ink's variance that it explains, their squared correlation; 0 where they disagree. Nothing when it
    /// cannot be better than `least`, or one is more than twice as wide or as high as the other.
    std::optional<double> share(const InkTemplate& candidate, double least) const;

private:
    bool comparable(const InkTemplate& candidate) const;

    Growable<std::uint8_t> m_bytes;
    std::ptrdiff_t m_stride = 0;
    int m_width = 0; ///< of the box with its ring
    int m_height = 0;
    int m_padX = 0;
    int m_padY = 0;
    int m_shift = 0;
    std::int64_t m_sum = 0;
    std::int64_t m_squares = 0;
};

} // namespace ormalux
