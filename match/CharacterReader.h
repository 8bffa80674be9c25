#pragma once

#include "match/InkTemplate.h"

#include <span>

namespace ormalux {

/// The two characters that agree best with a box, with the shares that InkBox gives; -1 where there is none,
/// its share 0.
struct BestKeys
{
    int key = -1;
    int second = -1;
    double share = 0;
    double secondShare = 0;
};

/// Reads boxes with one set of templates.
class CharacterReader
{
public:
    CharacterReader(const ConstGrayView& image, const InkLevels& levels, int shift,
                    std::span<const InkTemplate> templates);

    /// The first of equals. The box must lie in the image. False when memory is short.
    bool read(const CharacterBox& box, BestKeys& best);
    /// Reads many boxes, in parallel. False when memory is short.
    bool readAll(std::span<const CharacterBox> boxes, std::span<BestKeys> best) const;

    /// Whether some template is about as large as the box.
    bool hasSize(const CharacterBox& box) const;
    /// The largest extents of a box that has a template of its size.
    int widest() const { return m_widest; }
    int highest() const { return m_highest; }
    /// The smallest ink of a template.
    std::int64_t leastInk() const { return m_leastInk; }

private:
    ConstGrayView m_image;
    InkLevels m_levels;
    int m_shift;
    std::span<const InkTemplate> m_templates;
    int m_widest = 0;
    int m_highest = 0;
    std::int64_t m_leastInk = 0;
    InkBox m_ink;
};

} // namespace ormalux
