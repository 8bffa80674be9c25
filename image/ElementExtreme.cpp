#include "image/ElementExtreme.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <utility>

namespace ormalux {

namespace {

// Up to so many columns or rows are compared at once, which spares passes over the row.
constexpr int gathered = 8;

} // namespace

ElementExtreme::ElementExtreme(const StructuringElement& element, int pictureWidth)
    : m_element(element), m_width(std::size_t(pictureWidth)),
      m_lineWidth(m_width + std::size_t(element.width) - 1),
      // An odd number of cache lines: rows one below the other never compete for the same lines.
      m_stride(std::size_t(wholeLines(std::ptrdiff_t(m_lineWidth))) | 64),
      m_levels(std::bit_width(unsigned(element.width)))
{}

bool ElementExtreme::prepare()
{
    const std::size_t height = std::size_t(m_element.height);
    // Two blocks of rows, the running extreme and two lines; or the levels of the rows under the element.
    const std::size_t rows =
        m_element.shape == ElementShape::Rect ? 2 * height + 3 : height * std::size_t(m_levels);
    m_bytes = scratchBytes(rows * m_stride);
    m_rows.reset(new (std::nothrow) const std::uint8_t*[2 * height]);
    return m_bytes && m_rows;
}

void ElementExtreme::run(GrayView image, Extreme extreme)
{
    m_extreme = extreme == Extreme::Least ? kernels::leastOfRows() : kernels::greatestOfRows();
    m_outside = extreme == Extreme::Least ? 255 : 0;
    if (m_element.shape != ElementShape::Rect)
        runSpans(image);
    else if (m_element.height <= gathered)
        runLowRectangle(image);
    else
        runRectangle(image);
}

// The picture's row with what the element reaches beside it.
std::uint8_t* ElementExtreme::fillLine(const GrayView& image, int y, std::uint8_t* line) const
{
    const std::size_t before = std::size_t(m_element.anchorX());
    std::memset(line, m_outside, before);
    std::memcpy(line + before, image.row(y), m_width);
    std::memset(line + before + m_width, m_outside, m_lineWidth - before - m_width);
    return line;
}

// The extremes of a few columns, without a line: only the ends of the row reach beside it.
void ElementExtreme::gatherRow(const std::uint8_t* row, std::uint8_t* to) const
{
    const int width = int(m_width), before = m_element.anchorX(), after = m_element.width - 1 - before;
    const auto end = [&](int x) {
        const std::uint8_t* columns[gathered];
        std::size_t n = 0;
        for (int column = std::max(x - before, 0); column <= std::min(x + after, width - 1); ++column)
            columns[n++] = row + column;
        m_extreme(columns, n, to + x, 1);
    };
    const int inner = width - before - after;
    for (int x = 0; x < std::min(before, width); ++x)
        end(x);
    for (int x = std::max(width - after, std::min(before, width)); x < width; ++x)
        end(x);
    if (inner < 1)
        return;
    const std::uint8_t* columns[gathered];
    for (int i = 0; i < m_element.width; ++i)
        columns[i] = row + i;
    m_extreme(columns, std::size_t(m_element.width), to + before, std::size_t(inner));
}

void ElementExtreme::fetchRectangleRow(const GrayView& image, int y, std::uint8_t* to)
{
    if (y < 0 || y >= image.height) {
        std::memset(to, m_outside, m_width);
        return;
    }
    std::uint8_t* line = m_bytes.get() + (2 * std::size_t(m_element.height) + 1) * m_stride;
    std::uint8_t* other = line + m_stride;
    if (m_element.width <= gathered)
        return gatherRow(image.row(y), to);
    fillLine(image, y, line);
    const std::size_t width = std::size_t(m_element.width);
    std::size_t run = 1;
    for (; 2 * run <= width; run *= 2) {
        extremeOfTwo(line, line + run, other, m_lineWidth - 2 * run + 1);
        std::swap(line, other);
    }
    extremeOfTwo(line, line + width - run, to, m_width);
}

// Every row's extremes stand in a ring until no output row sees them.
void ElementExtreme::runLowRectangle(GrayView image)
{
    const std::uint8_t* rows[gathered];
    const auto ring = [&](int y) { return m_bytes.get() + std::size_t(y % m_element.height) * m_stride; };
    int fetched = 0;
    for (int y = 0; y < image.height; ++y) {
        const int top = y - m_element.anchorY(), end = std::min(top + m_element.height, image.height);
        for (; fetched < end; ++fetched)
            fetchRectangleRow(image, fetched, ring(fetched));
        std::size_t n = 0;
        for (int row = std::max(top, 0); row < end; ++row)
            rows[n++] = ring(row);
        m_extreme(rows, n, image.row(y), m_width);
    }
}

// Output row y sees the rows y - anchor on, as many as the element is high: the end of one block of rows, of
// which the extremes from each row to the block's end are kept, and the beginning of the next. Rows are
// fetched before their place is written.
void ElementExtreme::runRectangle(GrayView image)
{
    const int height = m_element.height;
    std::uint8_t* ends = m_bytes.get();
    std::uint8_t* next = ends + std::size_t(height) * m_stride;
    std::uint8_t* const begun = m_bytes.get() + 2 * std::size_t(height) * m_stride;
    const auto closeBlock = [&](std::uint8_t* block) {
        for (int i = height - 2; i >= 0; --i)
            extremeOfTwo(block + i * m_stride, block + (i + 1) * m_stride, block + i * m_stride, m_width);
    };
    int fetched = -m_element.anchorY();
    for (int i = 0; i < height; ++i)
        fetchRectangleRow(image, fetched++, ends + i * m_stride);
    closeBlock(ends);
    for (int y = 0; y < image.height;) {
        for (int i = 0; i < height && y < image.height; ++i, ++y) {
            std::uint8_t* const end = ends + i * m_stride;
            std::uint8_t* const row = next + i * m_stride;
            if (i == 0)
                std::memcpy(image.row(y), end, m_width);
            else
                extremeOfTwo(end, begun, image.row(y), m_width);
            fetchRectangleRow(image, fetched++, row);
            if (i == 0)
                std::memcpy(begun, row, m_width);
            else
                extremeOfTwo(begun, row, begun, m_width);
        }
        closeBlock(next);
        std::swap(ends, next);
    }
}

void ElementExtreme::fetchLevels(const GrayView& image, int y)
{
    fillLine(image, y, level(y, 0));
    for (int n = 1; n < m_levels; ++n) {
        const std::uint8_t* half = level(y, n - 1);
        const std::size_t run = std::size_t(1) << n;
        extremeOfTwo(half, half + run / 2, level(y, n), m_lineWidth - run + 1);
    }
}

void ElementExtreme::runSpans(GrayView image)
{
    int fetched = 0;
    for (int y = 0; y < image.height; ++y) {
        const int top = y - m_element.anchorY();
        for (; fetched < image.height && fetched < top + m_element.height; ++fetched)
            fetchLevels(image, fetched);
        std::size_t n = 0;
        for (int i = 0; i < m_element.height; ++i) {
            const auto [begin, end] = m_element.runs[i];
            if (begin == end || top + i < 0 || top + i >= image.height)
                continue;
            const int power = std::bit_width(unsigned(end - begin)) - 1;
            const std::uint8_t* run = level(top + i, power);
            m_rows[n++] = run + begin;
            if (end - (1 << power) != begin)
                m_rows[n++] = run + end - (1 << power);
        }
        m_extreme(m_rows.get(), n, image.row(y), m_width);
    }
}

} // namespace ormalux
