#include "tests/array/ArrayModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace testing_support;

namespace {

// A record of every kind for a number.
template <class Record>
Record recordOf(int n);
template <>
RECT recordOf(int n)
{
    return {n, n + 1, n * 3, -n};
}
template <>
_stPixel recordOf(int n)
{
    return {n, -n, std::uint8_t(n), n / 4.0};
}
template <>
std::uint8_t recordOf(int n)
{
    return std::uint8_t(n);
}
template <>
CString recordOf(int n)
{
    return CString(std::size_t(n % 40), 'x') + std::to_string(n);
}
template <>
CPointArray recordOf(int n)
{
    CPointArray points;
    for (int i = 0; i < n % 5; ++i)
        points.Add(n, i);
    return points;
}

template <class ArrayType, class RecordType>
struct Member
{
    using Array = ArrayType;
    using Record = RecordType;
};

/// An array and its model, driven side by side by random calls.
template <class M>
class Twins
{
public:
    using Array = typename M::Array;
    using Record = typename M::Record;
    static constexpr bool rectangles = std::is_same_v<Record, RECT>;

    explicit Twins(std::mt19937& engine) : m_engine(engine) {}

    void step()
    {
        const int choice = below(100);
        if (choice < 75)
            return store();
        if (choice >= 95)
            return replaceStorage();
        const int index = wildIndex();
        m_array.Remove(index);
        m_model.remove(index);
    }

    void compare(bool everySlot)
    {
        ASSERT_EQ(m_array.GetCount(), m_model.count);
        const auto records = m_array.records();
        ASSERT_EQ(int(records.size()), std::min(m_model.count, m_model.capacity()));
        for (std::size_t i = 0; i < records.size(); ++i)
            ASSERT_TRUE(same(records[i], m_model.slots[i])) << i;
        for (int i = -2; everySlot && i < m_model.capacity() + 3; ++i)
            ASSERT_TRUE(same(m_array[i], m_model.get(i))) << i << " of " << m_model.count;
    }

private:
    int below(int n) { return int(m_engine() % unsigned(n)); }

    int wildIndex()
    {
        const int ends[] = {
            INT_MIN,     -1,     m_model.count - 1, m_model.count, m_model.capacity() - 1, m_model.capacity(),
            INT_MAX - 1, INT_MAX};
        return below(3) ? below(m_model.count + 3) : ends[below(8)];
    }

    void store()
    {
        const Record record = recordOf<Record>(below(100000));
        const int index = wildIndex();
        switch (below(5)) {
        case 0:
            m_array.Insert(index, record);
            return m_model.insert(index, record);
        case 1:
            m_array.SetAt(index, record);
            return m_model.put(index, record);
        case 2: { // a record of the array itself, while it may grow
            const Record own = m_model.get(index);
            m_array.Add(m_array[index]);
            return m_model.add(own);
        }
        default:
            m_array.Add(record);
            m_model.add(record);
        }
    }

    void replaceStorage()
    {
        const int rooms[] = {INT_MIN, -1, 0, 1, 5, m_model.count, m_model.count + 1, 250, INT_MAX};
        const int room = rooms[below(9)];
        switch (below(4)) {
        case 0:
            m_array.RemoveAll();
            m_model.count = 0;
            return;
        case 1:
            return assign();
        default:
            m_array.SetCount(room);
            m_model.setCount(room);
        }
    }

    void assign()
    {
        Twins other(m_engine);
        for (int i = below(300); i > 0; --i)
            other.store();
        if (below(3) == 0) {
            other.m_array.SetCount(7);
            other.m_model.setCount(7);
        }
        const Array copy(other.m_array);
        switch (below(3)) {
        case 0:
            m_array = copy;
            break;
        case 1:
            m_array = std::move(other.m_array);
            other.m_array.Add(recordOf<Record>(5)); // what is left behind must be usable
            break;
        default:
            Array& self = m_array;
            m_array = self;
            return;
        }
        if (rectangles) { // added one by one: the room never shrinks
            m_model.count = 0;
            for (int i = 0; i < other.m_model.count; ++i)
                m_model.add(other.m_model.get(i));
        } else {
            m_model = other.m_model;
        }
    }

    std::mt19937& m_engine;
    Array m_array;
    ArrayModel<Record> m_model;
};

template <class M>
class RecordArrays : public testing::Test
{
};

using Members = testing::Types<Member<CRectArray, RECT>, Member<CPixelArray, _stPixel>,
                               Member<CSortByteArray, std::uint8_t>, Member<CSortStringArray, CString>,
                               Member<CPointArrayArray, CPointArray>>;
TYPED_TEST_SUITE(RecordArrays, Members);

} // namespace

TYPED_TEST(RecordArrays, AnyCallsWithAnyArgumentsDoWhatThePlainModelDoes)
{
    std::mt19937 engine(99);
    for (int round = 0; round < 30 && !this->HasFatalFailure(); ++round) {
        Twins<TypeParam> twins(engine);
        for (int call = 0; call < 400 && !this->HasFatalFailure(); ++call) {
            twins.step();
            twins.compare(call % 16 == 0);
        }
    }
}

TYPED_TEST(RecordArrays, ElementAccessWithinTheRoomMovesNoRecord)
{
    typename TypeParam::Array array;
    array.Add(recordOf<typename TypeParam::Record>(7));
    auto& first = array[0];
    array[99] = array[0];
    EXPECT_EQ(&first, &array[0]);
    EXPECT_TRUE(same(array[99], first));
}

TYPED_TEST(RecordArrays, RoomThatCannotBeHadIsRefusedNotTried)
{
    for (int n : {INT_MIN, -1, INT_MAX}) {
        typename TypeParam::Array array(n);
        array.Add(recordOf<typename TypeParam::Record>(3));
        EXPECT_EQ(array.GetCount(), 1);
        array.SetCount(INT_MAX);
        EXPECT_TRUE(same(array[0], recordOf<typename TypeParam::Record>(3)));
        EXPECT_TRUE(array.appendForOverwrite(std::size_t(INT_MAX)).empty());
    }
}

TEST(RecordArray, FieldwiseFormsStoreWhatTheRecordFormsStore)
{
    CColorPixelExArray pixels;
    pixels.Add(1, 2, 200, 100, 50);
    pixels.Add(1, 2, 0x003264C8ul);
    _stColorPixelEx given;
    given.red = 200;
    given.green = 100;
    given.blue = 50;
    given.cyan = 99;
    pixels.Add(given);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(int(pixels[i].red), 200);
        EXPECT_EQ(int(pixels[i].cyan), 0);
        EXPECT_EQ(int(pixels[i].magenta), 100);
        EXPECT_EQ(int(pixels[i].yellow), 150);
        EXPECT_EQ(int(pixels[i].black), 55);
    }
    CColorPixelArray colors;
    colors.Add(3, 4, 1, 2, 3);
    EXPECT_EQ(colors[0].color, 0x00030201u);
    EXPECT_EQ(colors[0].parameter, 0.0);
}

TEST(RecordArray, FindStartsAtZeroForANegativeStartAndComparesEveryField)
{
    CPixelBunchArray bunches;
    bunches.Add(7, 10, 0.5f);
    bunches.Add(7, 10, 0.25f);
    bunches.Add(7, 10, 0.25f);
    EXPECT_EQ(bunches.Find(7, 10, 0.25f, INT_MIN), 1);
    EXPECT_EQ(bunches.Find(_stPixelBunch{7, 10, 0.25f}, 2), 2);
    EXPECT_EQ(bunches.Find(7, 10, 0.25f, 3), -1);
    EXPECT_EQ(bunches.Find(7, 11, 0.25f, 0), -1);
    EXPECT_EQ(bunches.Find(7, 10, 0.5f, INT_MAX), -1);
    CSortStringArray texts;
    texts.Add("Beta");
    texts.Add("beta");
    texts.Add(static_cast<const char*>(nullptr));
    EXPECT_EQ(texts.Find("beta", -5), 1);
    EXPECT_EQ(texts.Find(CString("BETA"), 0), -1);
    EXPECT_EQ(texts.Find("", 0), 2);
    CDoubleArray numbers;
    numbers.Add(std::nan(""));
    numbers.Add(-0.0);
    EXPECT_EQ(numbers.Find(0.0, 0), 1);
    EXPECT_EQ(numbers.Find(std::nan(""), 0), -1);
}

TEST(RecordArray, SumsWrapAt32BitsAndTheAverageOfNothingIsNotANumber)
{
    CLongArray numbers;
    EXPECT_TRUE(std::isnan(numbers.GetAverage()));
    numbers.Add(INT_MAX);
    numbers.Add(1);
    EXPECT_EQ(numbers.GetSum(), long(INT_MIN));
    EXPECT_EQ(numbers.GetAverage(), INT_MIN / 2.0);
    CUShortArray words;
    EXPECT_TRUE(std::isnan(words.GetAverage()));
    for (int i = 0; i < 3; ++i)
        words.Add(65535);
    EXPECT_EQ(words.GetSum(), 3 * 65535);
    CDoubleArray doubles; // in the order of the records: 1 is lost before 1e16 goes
    for (double v : {1e16, 1.0, -1e16})
        doubles.Add(v);
    EXPECT_EQ(doubles.GetSum(), 0.0);
}

TEST(SortByteArray, JoiningReportsTheSumOfBothRoomsAndReallyHasThem)
{
    CSortByteArray a, b(7);
    for (int i = 0; i < 5; ++i)
        a.Add(std::uint8_t(i)), b.Add(std::uint8_t(10 + i));
    EXPECT_EQ(&(a + b), &a);
    EXPECT_EQ(a.GetCount(), 10);
    EXPECT_EQ(a.GetCapacity(), 107);
    a + a;
    EXPECT_EQ(a.GetCount(), 20);
    EXPECT_EQ(a.GetCapacity(), 214);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(int(a[i]), i % 10 < 5 ? i % 5 : 10 + i % 5) << i;
    for (int i = 20; i < 214; ++i)
        ASSERT_EQ(int(a[i]), 0);
    for (int i = 0; i < 500; ++i)
        a.Add(std::uint8_t(i));
    EXPECT_EQ(a.GetCapacity(), 614);
    CSortByteArray none(0);
    none + none;
    EXPECT_EQ(none.GetCapacity(), 0);
    a.SetCount(3); // more in use than there is room for
    none + a;
    EXPECT_EQ(none.GetCount(), 520);
    EXPECT_EQ(int(none[2]), 2);
    EXPECT_EQ(int(none[3]), 0);
}
