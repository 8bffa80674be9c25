#include "image/LocalThreshold.h"

#include "image/RowWindow.h"
#include "image/kernels/LocalMeanKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ormalux {

namespace {

// Half the weights, from the middle on, of windows of 3, 5, 7 and 9.
constexpr float smallWeights[4][5] = {{0.5f, 0.25f},
                                      {0.375f, 0.25f, 0.0625f},
                                      {0.28125f, 0.21875f, 0.109375f, 0.03125f},
                                      {60 / 256.0f, 51 / 256.0f, 30 / 256.0f, 13 / 256.0f, 4 / 256.0f}};

void gaussianWeights(float* weights, int reach)
{
    if (reach <= 4) {
        std::copy_n(smallWeights[reach - 1], reach + 1, weights);
        return;
    }
    const double sigma = 0.3 * (reach - 1) + 0.8;
    const auto weight = [&](int i) { return std::exp(-0.5 * i * i / (sigma * sigma)); };
    double sum = 1;
    for (int i = 1; i <= reach; ++i)
        sum += 2 * weight(i);
    for (int i = 0; i <= reach; ++i)
        weights[i] = float(weight(i) / sum);
}

/// Words of scratch: a line with what the window reaches beside it and one word before, and others.
class Line
{
public:
    Line(int width, std::size_t reach, std::size_t others)
        : m_count(std::size_t(width)), m_reach(reach),
          m_bytes(scratchBytes(sizeof(float) * (m_count + 2 * reach + 1 + others)))
    {}
    bool made() const { return m_bytes != nullptr; }
    /// Of the pixel 0.
    template <class T>
    T* first() const
    {
        return reinterpret_cast<T*>(m_bytes.get()) + 1 + m_reach;
    }
    template <class T>
    T* others() const
    {
        return first<T>() + m_count + m_reach;
    }
    /// Pixels outside are as the nearest one inside.
    template <class T>
    void fillBeside() const
    {
        T* line = first<T>();
        std::fill_n(line - m_reach, m_reach, line[0]);
        std::fill_n(line + m_count, m_reach, line[m_count - 1]);
    }

private:
    std::size_t m_count;
    std::size_t m_reach;
    ScratchBytes m_bytes;
};

class MeanRows
{
public:
    MeanRows(int width, int window, int offset)
        : m_count(std::size_t(width)), m_window(std::size_t(window)),
          m_scale(float(1.0 / (double(window) * window))), m_offset(offset),
          m_line(width, m_window / 2, m_count)
    {}
    bool prepared() const { return m_line.made(); }

    /// Sums the columns of all rows of the window but its last.
    void begin(const std::uint8_t* const* source)
    {
        std::uint32_t* columns = m_line.others<std::uint32_t>();
        std::fill_n(columns, m_count, 0);
        for (std::size_t i = 0; i + 1 < m_window; ++i)
            for (std::size_t x = 0; x < m_count; ++x)
                columns[x] += source[i][x];
    }

    void mark(const std::uint8_t* const* source, std::uint8_t* out)
    {
        std::uint32_t* line = m_line.first<std::uint32_t>();
        kernels::slideColumns(m_line.others<std::uint32_t>(), source[m_window - 1], source[0], line, m_count);
        m_line.fillBeside<std::uint32_t>();
        std::uint32_t* running = line - m_window / 2;
        running[-1] = 0;
        kernels::runningSums(running, m_count + m_window - 1);
        kernels::markAboveWindows(out, running - 1, m_window, m_scale, m_offset, m_count);
    }

private:
    std::size_t m_count;
    std::size_t m_window;
    float m_scale;
    int m_offset;
    Line m_line;
};

class GaussianRows
{
public:
    GaussianRows(int width, int window, int offset)
        : m_count(std::size_t(width)), m_reach(std::size_t(window) / 2), m_offset(offset),
          m_line(width, m_reach, m_count + m_reach + 1)
    {
        if (prepared())
            gaussianWeights(weights(), window / 2);
    }
    bool prepared() const { return m_line.made(); }
    void begin(const std::uint8_t* const*) {}

    void mark(const std::uint8_t* const* source, std::uint8_t* out)
    {
        float *line = m_line.first<float>(), *means = m_line.others<float>();
        kernels::weighRows(source + m_reach, weights(), m_reach, line, m_count);
        m_line.fillBeside<float>();
        kernels::weighLine(line, weights(), m_reach, means, m_count);
        kernels::markAboveMeans(out, means, m_offset, m_count);
    }

private:
    float* weights() const { return m_line.others<float>() + m_count; }

    std::size_t m_count;
    std::size_t m_reach;
    int m_offset;
    Line m_line;
};

template <class Rows>
bool markRows(GrayView image, int window, int offset)
{
    RowWindow source(image, window / 2, window / 2);
    Rows rows(image.width, window, offset);
    if (!rows.prepared() || !source.prepare(false))
        return false;
    bool begun = false;
    source.run(Band{0, 0, image.height}, [&](const std::uint8_t* const* at, std::uint8_t* out, int count) {
        if (!begun)
            rows.begin(at);
        begun = true;
        for (int y = 0; y < count; ++y)
            rows.mark(at + y, out + y * image.stride);
    });
    return true;
}

} // namespace

bool localThreshold(GrayView image, LocalMean method, int window, double offset)
{
    if (image.empty() || window < minLocalWindow || window > maxLocalWindow || window % 2 == 0 ||
        std::isnan(offset))
        return false;
    // Levels less a mean are whole numbers: only the next whole offset above can matter.
    const int whole = int(std::ceil(std::clamp(offset, -256.0, 256.0)));
    return method == LocalMean::Mean ? markRows<MeanRows>(image, window, whole)
                                     : markRows<GaussianRows>(image, window, whole);
}

} // namespace ormalux
