#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

/// Turns a fuzzer's bytes into arguments; zeros when they have run out.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_end(data + size) {}

    bool empty() const { return m_data == m_end; }
    std::uint8_t byte() { return m_data < m_end ? *m_data++ : 0; }
    bool flag() { return byte() & 1; }
    /// 0 up to, excluding, n.
    int below(int n) { return byte() % n; }

    /// Mostly near a small picture, now and then at the ends of the range.
    int coordinate()
    {
        static constexpr int ends[] = {INT_MIN, INT_MIN + 1, -32768, -1, 0, 32767, INT_MAX - 1, INT_MAX};
        const int choice = byte();
        if (choice < 16)
            return ends[choice % int(std::size(ends))];
        return choice < 24 ? (byte() << 8 | byte()) - 32768 : choice % 60 - 10;
    }
    double angle()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        static constexpr double special[] = {
            -180,  180,  90,       -90,       0,
            1e300, -1e9, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()};
        const int choice = byte();
        return choice < 32 ? special[choice % int(std::size(special))] : (byte() << 8 | byte()) / 64.0 - 512;
    }

private:
    const std::uint8_t* m_data;
    const std::uint8_t* m_end;
};
