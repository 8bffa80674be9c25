#pragma once

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
class LineWalk
{
public:
    LineWalk(POINT from, POINT to);

    std::int64_t count() const { return m_length + 1; }
    /// Whether the walk goes along y.
    bool steep() const { return m_steep; }
    /// Whether the shorter coordinate changes so rarely that copying runs pays.
    bool runsAreLong() const { return m_rise < m_length / 16; }
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

    /// The state of the walk: e decides about the next step.
    struct State
    {
        std::int64_t along;
        std::int64_t across;
        std::int64_t e;
    };
    State stateAt(std::int64_t step) const;
    std::int64_t acrossSign() const { return m_sign; }
    /// Added to e by a step that keeps, or moves, the shorter coordinate.
    std::int64_t keepIncrement() const { return 2 * m_rise; }
    std::int64_t moveIncrement() const { return 2 * (m_rise - m_length); }

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
            state.e += state.e > 0 ? moveIncrement() : keepIncrement();
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
    bool m_steep;
    std::int64_t m_along;
    std::int64_t m_across;
    std::int64_t m_length; // of the longer axis
    std::int64_t m_rise;   // of the shorter one, without its sign
    std::int64_t m_sign;
};

} // namespace ormalux
