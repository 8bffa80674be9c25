#include "measure/RunTable.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ormalux {

bool RunTable::find(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels,
                    Connectivity connectivity)
{
    m_width = region.right - region.left;
    m_height = region.bottom - region.top;
    m_words = (std::size_t(m_width) + 63) / 64;
    m_runCount = 0;
    m_labelCount = m_blobCount = 0;
    const std::size_t rows = std::size_t(m_height);
    if (!m_bits.reserve((rows + 2) * m_words) || !m_rowStarts.reserve(rows + 1))
        return false;
    std::memset(m_bits.data(), 0, m_words * sizeof(std::uint64_t));
    std::memset(m_bits.data() + (rows + 1) * m_words, 0, m_words * sizeof(std::uint64_t));
    kernels::packLevels({image.row(region.top) + region.left, image.stride, std::size_t(m_width), rows},
                        std::uint8_t(levels.low), std::uint8_t(levels.high), m_bits.data() + m_words,
                        m_words);
    m_rowStarts[0] = 0;
    const std::int32_t reach = connectivity == Connectivity::Eight ? 1 : 0;
    for (int y = 0; y < m_height; ++y)
        if (!findRuns(y) || !joinRows(y, reach))
            return false;
    gather();
    return true;
}

bool RunTable::findRuns(int y)
{
    if (!m_runs.reserve(m_runCount + std::size_t(m_width) / 2 + 2))
        return false;
    const std::uint64_t* row = bits(y);
    Run *begun = m_runs.data() + m_runCount, *ended = begun;
    std::uint64_t before = 0;
    for (std::size_t w = 0; w < m_words; ++w) {
        const std::uint64_t objects = row[w], after = w + 1 < m_words ? row[w + 1] : 0;
        const std::int32_t column = std::int32_t(w * 64);
        for (std::uint64_t firsts = objects & ~(objects << 1 | before >> 63); firsts != 0;
             firsts &= firsts - 1)
            begun++->begin = column + std::countr_zero(firsts);
        for (std::uint64_t lasts = objects & ~(objects >> 1 | after << 63); lasts != 0; lasts &= lasts - 1)
            ended++->end = column + std::countr_zero(lasts) + 1;
        before = objects;
    }
    m_runCount = std::size_t(ended - m_runs.data());
    m_rowStarts[std::size_t(y) + 1] = m_runCount;
    return true;
}

std::uint32_t RunTable::rootOf(std::uint32_t label)
{
    while (m_parents[label] != label) {
        m_parents[label] = m_parents[m_parents[label]];
        label = m_parents[label];
    }
    return label;
}

// Walks the runs of two rows side by side. Labels that meet become one set under the smallest, which is that
// of the blob's first run.
bool RunTable::joinRows(int y, std::int32_t reach)
{
    Run *run = m_runs.data() + m_rowStarts[std::size_t(y)], *const end = m_runs.data() + m_runCount;
    const Run* above = y > 0 ? runs(y - 1) : run;
    const Run* const aboveEnd = run;
    const std::size_t labels = std::size_t(m_labelCount) + std::size_t(end - run);
    if (labels > UINT32_MAX || !m_parents.reserve(labels) || !m_blobs.reserve(labels))
        return false;
    for (; run != end; ++run) {
        while (above != aboveEnd && above->end + reach <= run->begin)
            ++above;
        std::uint32_t label = kernels::noLabel;
        std::int64_t contacts = 0;
        for (const Run* touched = above; touched != aboveEnd && touched->begin < run->end + reach;
             ++touched) {
            const std::uint32_t other = rootOf(touched->blob);
            const std::uint32_t older = std::min(label, other);
            if (label != kernels::noLabel)
                m_parents[std::max(label, other)] = older;
            label = older;
            ++contacts;
        }
        if (label == kernels::noLabel) {
            label = m_labelCount++;
            m_parents[label] = label;
            m_blobs[label] = {};
        }
        run->blob = label;
        Blob& blob = m_blobs[label];
        blob.area += run->end - run->begin;
        ++blob.runs;
        blob.contacts += contacts;
    }
    return true;
}

void RunTable::gather()
{
    for (std::uint32_t label = 0; label < m_labelCount; ++label) {
        const Blob part = m_blobs[label];
        const std::uint32_t parent = m_parents[label];
        if (parent == label) {
            m_parents[label] = m_blobCount;
            m_blobs[m_blobCount++] = part;
            continue;
        }
        // Parents come first, so theirs is the blob already.
        const std::uint32_t index = m_parents[parent];
        m_parents[label] = index;
        m_blobs[index].area += part.area;
        m_blobs[index].runs += part.runs;
        m_blobs[index].contacts += part.contacts;
    }
    for (std::size_t i = 0; i < m_runCount; ++i)
        m_runs[i].blob = m_parents[m_runs[i].blob];
}

} // namespace ormalux
