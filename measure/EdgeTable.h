#pragma once

#include "image/GrayView.h"
#include "measure/LineGauge.h"
#include "measure/PointGauge.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <memory>

namespace ormalux {

/// The strongest edges of the scan lines of a line gauge, each line measured at most once. Lines outside the
/// picture are those of its border.
class ORMALUX_API EdgeTable
{
public:
    EdgeTable(const ConstGrayView& view, const LineGaugeTask& task);

    /// False when memory is short.
    bool valid() const { return m_places != nullptr; }
    /// The first line that is like no line before it, and the last that is like none behind it.
    std::int64_t firstLine() const { return m_first; }
    std::int64_t lastLine() const { return m_last; }
    /// Measures all lines of the area at once, in bands on the work pool.
    void measureAll();
    /// The strongest edge on the line; false when it has none.
    bool find(std::int64_t line, POINT& at);

private:
    struct Place
    {
        LONG x = unknown;
        LONG y = 0;
    };
    static constexpr LONG unknown = -2, none = -1;

    Place measure(std::int64_t line) const;
    void measureRows(std::int64_t first, std::int64_t end);
    void measureColumns(std::int64_t first, std::int64_t end);
    /// Neighbouring columns, row by row.
    void measureTogether(const GaugeLine& scan, kernels::StepRule rule, std::int64_t first, std::int64_t end);

    ConstGrayView m_view;
    LineGaugeTask m_task;
    std::int64_t m_first;
    std::int64_t m_last;
    std::unique_ptr<Place[]> m_places;
};

} // namespace ormalux
