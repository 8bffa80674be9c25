#pragma once

#include "image/GrayView.h"
#include "image/ScratchBytes.h"
#include "image/StructuringElement.h"
#include "image/kernels/ExtremeKernels.h"

#include <memory>

namespace ormalux {

enum class Extreme
{
    Least,
    Greatest
};

/// Replaces every pixel of a picture by the extreme under a structuring element laid with its anchor on the
/// pixel; what lies outside the picture does not count. In place, any number of times on pictures of one
/// size.
///
/// Rectangles go by the method of van Herk and of Gil and Werman down the columns, three extremes a pixel
/// whatever the height, and by runs of doubled length along the rows. Other shapes take for each of their
/// rows two such runs that cover it.
class ElementExtreme
{
public:
    ElementExtreme(const StructuringElement& element, int pictureWidth);

    /// Takes all memory that run needs. False when it is short.
    bool prepare();
    /// The picture must have the width given, and at least one row.
    void run(GrayView image, Extreme extreme);

private:
    void runLowRectangle(GrayView image);
    void runRectangle(GrayView image);
    void runSpans(GrayView image);
    std::uint8_t* fillLine(const GrayView& image, int y, std::uint8_t* line) const;
    void fetchRectangleRow(const GrayView& image, int y, std::uint8_t* to);
    void gatherRow(const std::uint8_t* row, std::uint8_t* to) const;
    void fetchLevels(const GrayView& image, int y);
    void extremeOfTwo(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* to, std::size_t count) const
    {
        const std::uint8_t* const rows[] = {a, b};
        m_extreme(rows, 2, to, count);
    }
    std::uint8_t* level(int y, int n) const
    {
        return m_bytes.get() + (std::size_t(y % m_element.height) * m_levels + n) * m_stride;
    }

    StructuringElement m_element;
    std::size_t m_width;
    std::size_t m_lineWidth; // with the columns outside that the element reaches
    std::size_t m_stride;
    int m_levels; // runs of 1, 2, 4 ... columns, up to the element's width
    ScratchBytes m_bytes;
    std::unique_ptr<const std::uint8_t*[]> m_rows;
    kernels::RowExtreme m_extreme = nullptr;
    std::uint8_t m_outside = 0; // what never becomes the extreme
};

} // namespace ormalux
