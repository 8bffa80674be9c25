#include "tools/PatternTemplate.h"

#include "array/MatchSourceFile.h"
#include "platform/File.h"

#include <algorithm>
#include <new>

namespace ormalux {

namespace {

constexpr std::size_t historyBytes = std::size_t(256) << 20;
constexpr std::size_t historySteps = 1000;

template <class Action>
bool withMemory(const Action& action)
{
    try {
        action();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace

bool PatternTemplate::isSize(std::int64_t width, std::int64_t height)
{
    return width >= 1 && height >= 1 && width <= maxSide && height <= maxSide && width * height <= maxPixels;
}

bool PatternTemplate::set(int x, int y, std::uint8_t value)
{
    if (!contains(x, y))
        return false;
    pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] = value;
    return true;
}

int PatternTemplate::blackCount() const
{
    return int(std::count(pixels.begin(), pixels.end(), std::uint8_t(0)));
}

int PatternTemplate::whiteCount() const
{
    return int(std::count_if(pixels.begin(), pixels.end(), [](std::uint8_t value) { return value > 254; }));
}

void PatternTemplate::flipLeftRight()
{
    const auto row = [this](int y) { return pixels.begin() + std::ptrdiff_t(y) * width; };
    for (int y = 0; y < height && !pixels.empty(); ++y)
        std::reverse(row(y), row(y) + width);
}

void PatternTemplate::flipUpDown()
{
    const auto row = [this](int y) { return pixels.begin() + std::ptrdiff_t(y) * width; };
    for (int y = 0; y < height / 2 && !pixels.empty(); ++y)
        std::swap_ranges(row(y), row(y) + width, row(height - 1 - y));
}

bool PatternTemplate::resize(int newWidth, int newHeight)
{
    if (!isSize(newWidth, newHeight))
        return false;
    return withMemory([&] {
        std::vector<std::uint8_t> kept(std::size_t(newWidth) * std::size_t(newHeight), 255);
        const int columns = pixels.empty() ? 0 : std::min(width, newWidth);
        for (int y = 0; y < std::min(height, newHeight); ++y)
            std::copy_n(pixels.begin() + std::ptrdiff_t(y) * width, columns,
                        kept.begin() + std::ptrdiff_t(y) * newWidth);
        pixels = std::move(kept);
        width = newWidth;
        height = newHeight;
    });
}

bool PatternTemplate::save(const char* path) const
{
    _stMatchSource source;
    source.key = key;
    source.threshold = threshold;
    source.black_count = blackCount();
    source.white_count = whiteCount();
    source.width = width;
    source.height = height;
    source.data = const_cast<std::uint8_t*>(pixels.data()); // only read
    return writeMatchSource(path, source);
}

std::pair<PatternRead, PatternTemplate> readPattern(const char* path)
{
    FileReader file(path);
    if (!file.isOpen())
        return {PatternRead::NoFile, {}};
    std::uint8_t head[matchSourceHeaderSize];
    const auto header = file.read(0, head) ? parseMatchSourceHeader(head) : std::optional<_stMatchSource>();
    if (!header)
        return {PatternRead::NotASource, {}};
    const std::uint64_t count = std::uint64_t(header->width) * std::uint64_t(header->height);
    if (count > file.length() - matchSourceHeaderSize)
        return {PatternRead::NotASource, {}};
    if (count > 0 && !PatternTemplate::isSize(header->width, header->height))
        return {PatternRead::TooLarge, {}};
    PatternTemplate pattern{header->key, header->threshold, header->width, header->height, {}};
    if (count == 0) // a side without the other has no pixels to show
        pattern.width = pattern.height = 0;
    if (!withMemory([&] { pattern.pixels.resize(std::size_t(count)); }))
        return {PatternRead::NoMemory, {}};
    if (!file.read(matchSourceHeaderSize, pattern.pixels))
        return {PatternRead::NotASource, {}};
    return {PatternRead::Done, std::move(pattern)};
}

void PatternHistory::restart(PatternTemplate pattern)
{
    m_current = std::move(pattern);
    m_past.clear();
    m_future.clear();
}

void PatternHistory::beginStep()
{
    m_cutOff = std::move(m_future);
    m_future.clear();
    if (!withMemory([this] { m_past.push_back(m_current); })) {
        // Without the memory to go back in, the past ends here.
        m_past.clear();
    }
    forgetOldest();
}

void PatternHistory::endStep()
{
    if (!m_past.empty() && m_past.back() == m_current) {
        m_past.pop_back();
        m_future = std::move(m_cutOff);
    }
    m_cutOff.clear();
}

bool PatternHistory::undo()
{
    if (m_past.empty() || !withMemory([this] { m_future.push_back(m_current); }))
        return false;
    m_current = std::move(m_past.back());
    m_past.pop_back();
    return true;
}

bool PatternHistory::redo()
{
    if (m_future.empty() || !withMemory([this] { m_past.push_back(m_current); }))
        return false;
    m_current = std::move(m_future.back());
    m_future.pop_back();
    return true;
}

void PatternHistory::forgetOldest()
{
    std::size_t bytes = 0;
    std::size_t kept = 0;
    while (kept < m_past.size() && kept < historySteps) {
        bytes += m_past[m_past.size() - 1 - kept].pixels.size();
        if (bytes > historyBytes)
            break;
        ++kept;
    }
    m_past.erase(m_past.begin(), m_past.end() - std::ptrdiff_t(kept));
}

} // namespace ormalux
