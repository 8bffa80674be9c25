#include "tests/array/ArrayModel.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace testing_support;

namespace {

/// Random keys in the manners that sorts stumble over.
class Keys
{
public:
    explicit Keys(int manner) : m_engine(unsigned(manner) + 1), m_manner(manner) {}
    static constexpr int manners = 5;

    template <class Key>
    Key next()
    {
        const std::uint64_t bits = std::uint64_t(m_engine()) << 32 | m_engine();
        if (m_manner == 0) // few values, so that equal ones must keep their order
            return Key(int(bits % 5) - 2);
        if (m_manner == 1) // falling
            return Key(100 - m_step++ / 3);
        if (m_manner == 2) // the values of a picture's coordinates
            return Key(bits % 2448);
        if constexpr (std::is_floating_point_v<Key>) {
            const Key odd[] = {std::numeric_limits<Key>::quiet_NaN(),
                               -std::numeric_limits<Key>::quiet_NaN(),
                               std::numeric_limits<Key>::infinity(),
                               -std::numeric_limits<Key>::infinity(),
                               Key(0),
                               -Key(0),
                               std::numeric_limits<Key>::denorm_min(),
                               Key(-1)};
            if (m_manner == 3 && bits % 3 == 0)
                return odd[bits / 3 % 8];
            using Bits = std::conditional_t<sizeof(Key) == 4, std::uint32_t, std::uint64_t>;
            const Key any = std::bit_cast<Key>(Bits(bits));
            return m_manner == 4 && std::isnan(any) ? Key(7) : any;
        } else {
            return bits % 16 == 0 ? std::numeric_limits<Key>::min() : Key(bits >> 8);
        }
    }

private:
    std::mt19937 m_engine;
    int m_manner;
    int m_step = 0;
};

template <class Record>
bool identical(const Record& a, const Record& b)
{
    return std::memcmp(static_cast<const void*>(&a), static_cast<const void*>(&b), sizeof a) == 0;
}

/// Sorts random records with the operation and with the bubble sort. setKey(record, keys) gives a record its
/// key; number(record, i) makes it unlike all others.
template <class Array, class SetKey, class KeyOf, class Number>
void checkSort(const char* name, void (Array::*sort)(), SetKey setKey, KeyOf keyOf, Number number)
{
    for (int manner = 0; manner < Keys::manners; ++manner)
        for (int n : {0, 1, 2, 3, 24, 25, 130, 511, manner == 2 ? 1100 : 700}) {
            Array array;
            Keys keys(manner);
            const std::span added = array.appendForOverwrite(std::size_t(n));
            std::ranges::fill(std::as_writable_bytes(added), std::byte(0)); // padding is compared too
            for (int i = 0; i < n; ++i) {
                number(added[std::size_t(i)], i);
                setKey(added[std::size_t(i)], keys);
            }
            std::vector expected(added.begin(), added.end());
            bubbleSort(expected, [&](const auto& a, const auto& b) { return keyOf(a) > keyOf(b); });
            (array.*sort)();
            for (int i = 0; i < n; ++i)
                ASSERT_TRUE(identical(array[i], expected[std::size_t(i)]))
                    << name << ", manner " << manner << ", record " << i << " of " << n;
        }
}

/// By a field, while another one tells the records apart.
template <class Array, class Record, class Key, class Id>
void checkFieldSort(const char* name, void (Array::*sort)(), Key Record::*key, Id Record::*id)
{
    checkSort(
        name, sort, [key](auto& r, Keys& keys) { r.*key = keys.next<Key>(); },
        [key](const auto& r) { return r.*key; }, [id](auto& r, int i) { r.*id = Id(i); });
}

/// By the extent between two fields, the lower one of which tells the records apart.
template <class Array, class Record>
void checkExtentSort(const char* name, void (Array::*sort)(), LONG Record::*low, LONG Record::*high)
{
    checkSort(
        name, sort, [=](auto& r, Keys& keys) { r.*high = r.*low + keys.next<std::int16_t>(); },
        [=](const auto& r) { return std::int64_t(r.*high) - r.*low; }, [=](auto& r, int i) { r.*low = i; });
}

} // namespace

TEST(Sort, RectanglesPointsAndSizesSortAsTheBubbleSortDoes)
{
    checkFieldSort("SortLeft", &CRectArray::SortLeft, &RECT::left, &RECT::top);
    checkFieldSort("SortTop", &CRectArray::SortTop, &RECT::top, &RECT::left);
    checkFieldSort("SortRight", &CRectArray::SortRight, &RECT::right, &RECT::left);
    checkFieldSort("SortBottom", &CRectArray::SortBottom, &RECT::bottom, &RECT::left);
    checkExtentSort("SortWidth", &CRectArray::SortWidth, &RECT::left, &RECT::right);
    checkExtentSort("SortHeight, by width", &CRectArray::SortHeight, &RECT::left, &RECT::right);
    checkFieldSort("SortX", &CPointArray::SortX, &POINT::x, &POINT::y);
    checkFieldSort("SortY", &CPointArray::SortY, &POINT::y, &POINT::x);
    checkFieldSort("SortWidth", &CSizeArray::SortWidth, &SIZE::cx, &SIZE::cy);
    checkFieldSort("SortHeight", &CSizeArray::SortHeight, &SIZE::cy, &SIZE::cx);
}

TEST(Sort, BlobsSortAsTheBubbleSortDoes)
{
    using Blobs = CBlobRectArray;
    using Blob = _stBlobRect;
    checkFieldSort("SortLeft", &Blobs::SortLeft, &Blob::left, &Blob::value1);
    checkFieldSort("SortTop", &Blobs::SortTop, &Blob::top, &Blob::value1);
    checkFieldSort("SortRight", &Blobs::SortRight, &Blob::right, &Blob::value1);
    checkFieldSort("SortBottom", &Blobs::SortBottom, &Blob::bottom, &Blob::value1);
    checkExtentSort("SortWidth", &Blobs::SortWidth, &Blob::left, &Blob::right);
    checkExtentSort("SortHeight", &Blobs::SortHeight, &Blob::top, &Blob::bottom);
    checkFieldSort("SortPixelCount", &Blobs::SortPixelCount, &Blob::pixel_count, &Blob::value1);
}

TEST(Sort, PixelArraysSortAsTheBubbleSortDoes)
{
    checkFieldSort("SortX", &CPixelArray::SortX, &_stPixel::x, &_stPixel::y);
    checkFieldSort("SortY, by x", &CPixelArray::SortY, &_stPixel::x, &_stPixel::y);
    checkFieldSort("SortGrayLevel", &CPixelArray::SortGrayLevel, &_stPixel::gray_level, &_stPixel::y);
    checkFieldSort("SortParameter", &CPixelArray::SortParameter, &_stPixel::parameter, &_stPixel::y);
    checkFieldSort("SortX", &CColorPixelArray::SortX, &_stColorPixel::x, &_stColorPixel::y);
    checkFieldSort("SortY, by x", &CColorPixelArray::SortY, &_stColorPixel::x, &_stColorPixel::y);
    checkFieldSort("SortX", &CColorPixelExArray::SortX, &_stColorPixelEx::x, &_stColorPixelEx::y);
    checkFieldSort("SortY, by x", &CColorPixelExArray::SortY, &_stColorPixelEx::x, &_stColorPixelEx::y);
    using Bunches = CPixelBunchArray;
    using Bunch = _stPixelBunch;
    checkFieldSort("SortTotalCount", &Bunches::SortTotalCount, &Bunch::total_count, &Bunch::percent);
    checkFieldSort("SortGrayLevel", &Bunches::SortGrayLevel, &Bunch::gray_level, &Bunch::total_count);
    checkFieldSort("SortPercent", &Bunches::SortPercent, &Bunch::percent, &Bunch::total_count);
}

TEST(Sort, ValueArraysSortAsTheBubbleSortDoes)
{
    const auto none = [](auto&, int) {};
    const auto set = [](auto& value, Keys& keys) {
        value = keys.next<std::remove_reference_t<decltype(value)>>();
    };
    const auto itself = [](auto value) { return value; };
    checkSort("CLongArray", &CLongArray::Sort, set, itself, none);
    checkSort("CUShortArray", &CUShortArray::Sort, set, itself, none);
    checkSort("CSortByteArray", &CSortByteArray::Sort, set, itself, none);
    checkSort("CDoubleArray", &CDoubleArray::Sort, set, itself, none);
}

TEST(Sort, MatchResultsLeaveEveryThresholdWhereItWas)
{
    const auto check = [](const char* name, void (CMatchResultArray::*sort)(), auto keyOf) {
        for (int manner = 0; manner < Keys::manners; ++manner)
            for (int n : {2, 30, 600}) {
                CMatchResultArray array;
                Keys keys(manner);
                for (int i = 0; i < n; ++i) {
                    const int a = keys.next<int>(), b = keys.next<int>();
                    const float black = keys.next<float>(), white = keys.next<float>();
                    array.Add(std::uint8_t(i), a, b, b / 3, a / 3, i, black, white, 1000 + i);
                }
                std::vector expected(array.records().begin(), array.records().end());
                bubbleSort(expected, [&](const auto& x, const auto& y) { return keyOf(x) > keyOf(y); });
                (array.*sort)();
                for (int i = 0; i < n; ++i) {
                    ASSERT_EQ(array[i].threshold, 1000 + i) << name;
                    ASSERT_EQ(array[i].pixel_count, expected[std::size_t(i)].pixel_count)
                        << name << " " << manner;
                }
            }
    };
    using Result = const _stMatchResult&;
    check("SortLeft", &CMatchResultArray::SortLeft, [](Result r) { return r.left; });
    check("SortTop", &CMatchResultArray::SortTop, [](Result r) { return r.top; });
    check("SortRight", &CMatchResultArray::SortRight, [](Result r) { return r.right; });
    check("SortBottom", &CMatchResultArray::SortBottom, [](Result r) { return r.bottom; });
    check("SortBlackYield", &CMatchResultArray::SortBlackYield, [](Result r) { return r.black_yield; });
    check("SortWhiteYield", &CMatchResultArray::SortWhiteYield, [](Result r) { return r.white_yield; });
    check("SortYieldAverage", &CMatchResultArray::SortYieldAverage,
          [](Result r) { return (r.white_yield + r.black_yield) * 0.5f; });
}

TEST(Sort, TextsSortByBytesWithoutRegardToTheCaseOfAsciiLetters)
{
    std::mt19937 engine(3);
    CSortStringArray array;
    const char letters[] = "abABzZ[_@\xEA\xB5";
    for (int i = 0; i < 600; ++i) {
        CString text;
        for (unsigned j = engine() % 4; j > 0; --j)
            text += letters[engine() % (sizeof letters - 1)];
        array.Add(text);
    }
    std::vector<CString> expected(array.records().begin(), array.records().end());
    const auto fold = [](CString text) {
        for (char& c : text)
            c = char(c >= 'A' && c <= 'Z' ? c + 32 : c);
        return text;
    };
    bubbleSort(expected, [&](const CString& a, const CString& b) { return fold(a) > fold(b); });
    array.Sort();
    EXPECT_TRUE(std::ranges::equal(array.records(), expected));
}

TEST(Sort, PolylinesSortByTheirNumberOfPointsAndStayWhole)
{
    CPointArrayArray array;
    for (int i = 0; i < 200; ++i) {
        CPointArray points;
        for (int j = 0; j < i * 37 % 50; ++j)
            points.Add(i, j);
        array.Add(points);
    }
    std::vector<CPointArray> expected(array.records().begin(), array.records().end());
    bubbleSort(expected, [](CPointArray& a, CPointArray& b) { return a.GetCount() > b.GetCount(); });
    array.SortPointCount();
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_TRUE(same(array.records()[i], expected[i])) << i;
}

TEST(Sort, ManyRecordsOfWideKeysStayInOrderAmongEqualOnes)
{
    std::mt19937 engine(5);
    CPixelArray byParameter;
    CRectArray byWidth;
    for (int i = 0; i < 200000; ++i) {
        byParameter.Add(i, 0, 0, std::ldexp(double(engine() % 30000) - 15000, int(engine() % 3) * 300));
        byWidth.Add(engine() % 2 ? INT_MIN : INT_MAX, i, engine() % 2 ? INT_MAX : INT_MIN + int(engine() % 9),
                    0);
    }
    std::vector<_stPixel> pixels(byParameter.records().begin(), byParameter.records().end());
    std::stable_sort(pixels.begin(), pixels.end(),
                     [](const _stPixel& a, const _stPixel& b) { return a.parameter < b.parameter; });
    byParameter.SortParameter();
    EXPECT_TRUE(std::ranges::equal(byParameter.records(), pixels,
                                   [](const _stPixel& a, const _stPixel& b) { return same(a, b); }));
    std::vector<RECT> rectangles(byWidth.records().begin(), byWidth.records().end());
    std::stable_sort(rectangles.begin(), rectangles.end(), [](const RECT& a, const RECT& b) {
        return std::int64_t(a.right) - a.left < std::int64_t(b.right) - b.left;
    });
    byWidth.SortWidth();
    EXPECT_TRUE(std::ranges::equal(byWidth.records(), rectangles));
}
