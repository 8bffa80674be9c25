#pragma once

#include "view/DrawObjArray.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace ormalux {

/// The places of the labels of one drawing, and the limits within which they leave its picture seen. All
/// coordinates are the painter's; rects exclude their right and bottom.
class LabelPlacer
{
public:
    static constexpr int letters = 12; ///< their height
    static constexpr int halo = 1;     ///< around the letters, which lie that far apart from other labels
    /// So many of the labels that a drawing shows are tried, in their order.
    static constexpr std::size_t tried = 2000;
    /// Labels cover no more than one part in so many of what is shown.
    static constexpr int share = 4;

    /// Labels stay in the area that is shown.
    explicit LabelPlacer(const RECT& shown);

    /// The outline of a box that has a label; all are added before the first place is asked for. Right and
    /// bottom belong to it.
    void addBox(const RECT& outline);

    /// The left top corner of a text of this size for the box added at the index: the wished place or the
    /// next one beside the box that lies on no label and, where there is such a one, across no other box's
    /// outline. Nothing where every place is taken.
    std::optional<POINT> place(std::size_t box, SIZE text, LABEL_PLACE wished);

    /// Whether the labels placed cover as much as they may.
    bool full() const { return m_covered * share >= m_area; }

private:
    struct Box
    {
        RECT rect;
        std::size_t index;
    };
    std::size_t bandOf(int y) const;
    bool isFree(const RECT& label, std::size_t box, bool besideBoxes) const;

    RECT m_shown;
    std::int64_t m_area;
    std::int64_t m_covered = 0;
    std::vector<RECT> m_boxes;
    std::vector<std::vector<RECT>> m_labelsOf; ///< by the bands of rows that they meet
    std::vector<std::vector<Box>> m_boxesOf;
};

} // namespace ormalux
