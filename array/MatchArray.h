#pragma once

#include "array/RecordArray.h"
#include "array/Records.h"
#include "platform/Export.h"

/// Binary templates, loaded from ".mcs" (patterns) and ".ocs" (characters) files.
///
/// Copies of the array share the templates' pixels; these live until the process ends.
class ORMALUX_API CMatchSrcArray : public ormalux::RecordArray<_stMatchSource>
{
public:
    using RecordArray::RecordArray;

    /// Appends the source in the file. Nothing is appended when the file cannot be opened, is shorter than
    /// its header or its pixels, or declares a negative size; a size of 0 loads as an empty source.
    virtual void Add(const char* path);
    virtual _stMatchSource& GetAt(int index) { return at(index); }
};

/// Candidates with their scores.
class ORMALUX_API CMatchResultArray : public ormalux::RecordArray<_stMatchResult>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(unsigned char key, int left, int top, int right, int bottom, int pixel_count,
                     float black_yield, float white_yield, long threshold);
    /// Leaves the slot's threshold as it was.
    virtual void Add(unsigned char key, int left, int top, int right, int bottom, int pixel_count,
                     float black_yield, float white_yield);

    // Stable ascending sorts. Deliberate: every position keeps its threshold, the other fields move.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortBlackYield();
    virtual void SortWhiteYield();
    /// By (white_yield + black_yield) x 0.5 in single precision: the best result comes last.
    virtual void SortYieldAverage();

    /// Appends the other's records to this array and returns it; the reported room becomes the count.
    CMatchResultArray& operator+(const CMatchResultArray& other);
};
