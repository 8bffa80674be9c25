#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

namespace ormalux {

/// A longer line is not traced as a whole: segments of it stay empty.
inline constexpr std::int64_t maxTracedPoints = std::int64_t(1) << 27;

/// Steps of a walk, the last one excluded.
struct Steps
{
    std::int64_t first = 0;
    std::int64_t end = 0;
};

/// A line's pixels as single steps along its longer axis (y when both are equal), toward larger coordinates
/// whatever the order of the ends; the other coordinate is the rounded one, halves staying nearer to the
/// start.
class ORMALUX_API LineWalk
{
public:
    LineWalk(POINT from, POINT to);

    std::int64_t count() const { return m_length + 1; }
    /// Whether the walk goes along y.
    bool steep() const { return m_steep; }
    /// Whether the shorter coordinate changes so rarely that its runs are worth being looked at one by one.
    bool runsAreLong() const { return m_rise < m_length / 128; }
    /// The extent of the shorter axis.
    std::int64_t rise() const { return m_rise; }
    /// The steps whose pixels lie in the rectangle, its corners included.
    Steps inside(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) const;
    POINT at(std::int64_t step) const;
    /// The step that visits the pixel, or -1.
    std::int64_t stepAt(std::int64_t x, std::int64_t y) const;
    /// How far the shorter coordinate has come at the step.
    std::int64_t sidewaysAt(std::int64_t step) const;
    /// The first step at which the shorter coordinate has come that far, 1 .. its whole way; for lines whose
    /// two extents have a product below 2^61.
    std::int64_t stepOfSideways(std::int64_t sideways) const;

    /// Where the walk starts, and the direction of the shorter coordinate.
    std::int64_t along() const { return m_along; }
    std::int64_t across() const { return m_across; }
    std::int64_t sign() const { return m_sign; }

    /// sidewaysAt(step) as start + step * increment in fixed point, rounded down: exact for lines shorter
    /// than limit, whose error stays below the distance of a rounding bound.
    struct Slope
    {
        static constexpr int shift = 42;
        static constexpr std::int64_t limit = std::int64_t(1) << 20;
        std::uint64_t start;
        std::uint64_t increment;
    };
    bool hasSlope() const { return m_length > 0 && m_length < Slope::limit; }
    Slope slope() const;

    /// Visits the pixels of the steps while visit(x, y) returns true.
    template <class Visit>
    void visitWhile(Steps steps, Visit&& visit) const
    {
        if (steps.first >= steps.end)
            return;
        State state = stateAt(steps.first);
        for (std::int64_t step = steps.first; step < steps.end; ++step) {
            if (!(m_steep ? visit(state.across, state.along) : visit(state.along, state.across)))
                return;
            ++state.along;
            state.across += state.e > 0 ? m_sign : 0;
            state.e += 2 * (state.e > 0 ? m_rise - m_length : m_rise);
        }
    }
    template <class Visit>
    void visit(Steps steps, Visit&& visit) const
    {
        visitWhile(steps, [&](std::int64_t x, std::int64_t y) {
            visit(x, y);
            return true;
        });
    }

private:
    struct State
    {
        std::int64_t along;
        std::int64_t across;
        std::int64_t e; // decides about the next step
    };
    State stateAt(std::int64_t step) const;

    bool m_steep;
    std::int64_t m_along;
    std::int64_t m_across;
    std::int64_t m_length; // of the longer axis
    std::int64_t m_rise;   // of the shorter one, without its sign
    std::int64_t m_sign;
};

} // namespace ormalux
