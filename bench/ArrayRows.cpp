#include "array/Array.h"
#include "bench/Bench.h"

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

/// Pixels of random places and gray levels; the parameter numbers them.
std::shared_ptr<std::vector<_stPixel>> randomPixels(int n)
{
    std::mt19937 engine(17);
    auto pixels = std::make_shared<std::vector<_stPixel>>();
    for (int i = 0; i < n; ++i)
        pixels->push_back(
            {int(engine() % 2448), int(engine() % 2048), std::uint8_t(engine()), double(engine()) - 1e9});
    return pixels;
}

template <class KeyOf>
bench::Row sortRow(const char* operation, const char* size, int n, double goal, void (CPixelArray::*sort)(),
                   KeyOf keyOf)
{
    const auto given = randomPixels(n);
    const auto array = std::make_shared<CPixelArray>();
    const auto list = std::make_shared<std::vector<_stPixel>>();
    bench::Row row;
    row.operation = operation;
    row.size = size;
    row.peer = "std::stable_sort";
    row.goal = goal;
    row.prepare = [=] {
        array->RemoveAll();
        std::copy(given->begin(), given->end(), array->appendForOverwrite(given->size()).begin());
    };
    row.prepareTheirs = [=] { *list = *given; };
    row.ours = [=] { (array.get()->*sort)(); };
    row.theirs = [=] {
        std::stable_sort(list->begin(), list->end(),
                         [=](const _stPixel& a, const _stPixel& b) { return keyOf(a) < keyOf(b); });
    };
    row.limit = [=] { *list = *given; };
    row.check = [=] {
        row.prepare();
        row.ours();
        row.prepareTheirs();
        row.theirs();
        return std::ranges::equal(array->records(), *list, [](const _stPixel& a, const _stPixel& b) {
            return a.x == b.x && a.gray_level == b.gray_level && a.parameter == b.parameter;
        });
    };
    return row;
}

bench::Row appendRow()
{
    static constexpr int n = 1000000;
    bench::Row row;
    row.operation = "Append pixels";
    row.size = "10^6 records";
    row.peer = "std::vector push_back";
    row.goal = 1.0;
    row.ours = [] {
        CPixelArray array;
        for (int i = 0; i < n; ++i)
            array.Add(i, i, std::uint8_t(i), 0.0);
        bench::keep(array[n - 1]);
    };
    row.theirs = [] {
        std::vector<_stPixel> list;
        for (int i = 0; i < n; ++i)
            list.push_back({i, i, std::uint8_t(i), 0.0});
        bench::keep(list[n - 1]);
    };
    return row;
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    const auto gray = [](const _stPixel& p) { return p.gray_level; };
    const auto x = [](const _stPixel& p) { return p.x; };
    const auto parameter = [](const _stPixel& p) { return p.parameter; };
    table.push_back(
        sortRow("Sort by a byte key", "10^4 records", 10000, 0.12, &CPixelArray::SortGrayLevel, gray));
    table.push_back(
        sortRow("Sort by a byte key", "10^6 records", 1000000, 0.12, &CPixelArray::SortGrayLevel, gray));
    table.push_back(sortRow("Sort by a coordinate", "10^6 records", 1000000, 0, &CPixelArray::SortX, x));
    table.push_back(
        sortRow("Sort by a double", "10^6 records", 1000000, 0, &CPixelArray::SortParameter, parameter));
    table.push_back(appendRow());
}};

} // namespace
