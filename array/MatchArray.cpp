#include "array/MatchArray.h"

#include "array/MatchSourceFile.h"
#include "array/RecordSort.h"

namespace {

/// Deliberate: every position keeps its threshold, only the other fields move with the key; callers rely on
/// it. Nothing moves when memory is short.
template <class KeyOf>
void sortAroundThresholds(std::span<_stMatchResult> results, KeyOf keyOf)
{
    const auto thresholds = ormalux::sorting::scratchFor<LONG>(results.size());
    if (!thresholds)
        return;
    for (std::size_t i = 0; i < results.size(); ++i)
        thresholds[i] = results[i].threshold;
    ormalux::sortRecords(results, keyOf);
    for (std::size_t i = 0; i < results.size(); ++i)
        results[i].threshold = thresholds[i];
}

} // namespace

void CMatchSrcArray::Add(const char* path)
{
    if (const auto source = ormalux::readMatchSource(path))
        append(*source);
}

void CMatchResultArray::Add(unsigned char key, int left, int top, int right, int bottom, int pixel_count,
                            float black_yield, float white_yield, long threshold)
{
    append(_stMatchResult{key, left, top, right, bottom, pixel_count, black_yield, white_yield,
                          LONG(threshold)});
}

void CMatchResultArray::Add(unsigned char key, int left, int top, int right, int bottom, int pixel_count,
                            float black_yield, float white_yield)
{
    if (!appendSlot())
        return;
    _stMatchResult& slot = at(m_count - 1);
    slot = {key, left, top, right, bottom, pixel_count, black_yield, white_yield, slot.threshold};
}

void CMatchResultArray::SortLeft()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.left; });
}

void CMatchResultArray::SortTop()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.top; });
}

void CMatchResultArray::SortRight()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.right; });
}

void CMatchResultArray::SortBottom()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.bottom; });
}

void CMatchResultArray::SortBlackYield()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.black_yield; });
}

void CMatchResultArray::SortWhiteYield()
{
    sortAroundThresholds(records(), [](const _stMatchResult& r) { return r.white_yield; });
}

void CMatchResultArray::SortYieldAverage()
{
    sortAroundThresholds(records(),
                         [](const _stMatchResult& r) { return (r.white_yield + r.black_yield) * 0.5f; });
}

CMatchResultArray& CMatchResultArray::operator+(const CMatchResultArray& other)
{
    join(other, std::int64_t(m_count) + other.m_count);
    return *this;
}
