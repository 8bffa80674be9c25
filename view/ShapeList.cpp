#include "view/ShapeList.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ormalux {

namespace {
constexpr std::size_t longestTag = 255;
constexpr std::size_t longestText = 99;

bool continues(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}
} // namespace

std::string_view utf8Prefix(const char* text, std::size_t limit)
{
    if (!text)
        return {};
    const void* end = std::memchr(text, 0, limit + 1);
    if (end)
        return {text, std::size_t(static_cast<const char*>(end) - text)};
    std::size_t length = limit;
    while (length > 0 && continues(text[length]))
        --length;
    // A text of nothing but continuation bytes has no character to keep whole.
    return {text, length > 0 ? length : limit};
}

std::uint32_t ShapeList::idOf(std::string_view tag)
{
    if (const auto found = m_tags.find(tag); found != m_tags.end())
        return found->second;
    m_tags.emplace(std::string(tag), m_nextTag);
    return m_nextTag++;
}

void ShapeList::add(Shape shape, const char* tag, const char* text) noexcept
{
    const std::size_t oldTexts = m_texts.size();
    try {
        const std::string_view kept = utf8Prefix(text, longestText);
        if (m_shapes.size() >= INT32_MAX - step || oldTexts + kept.size() > UINT32_MAX)
            return;
        m_texts.append(kept);
        shape.textStart = std::uint32_t(oldTexts);
        shape.textLength = std::uint8_t(kept.size());
        shape.tag = idOf(utf8Prefix(tag, longestTag));
        m_shapes.push_back(shape);
        if (count() > m_capacity)
            m_capacity += step;
    } catch (const std::bad_alloc&) {
        m_texts.resize(oldTexts);
    }
}

void ShapeList::remove(const char* tag) noexcept
{
    const auto found = m_tags.find(utf8Prefix(tag, longestTag));
    if (found == m_tags.end())
        return;
    const auto id = found->second;
    std::erase_if(m_shapes, [id](const Shape& shape) { return shape.tag == id; });
    m_tags.erase(found);
    packTexts();
}

void ShapeList::clear() noexcept
{
    m_shapes.clear();
    m_texts.clear();
    m_tags.clear();
}

int ShapeList::count(const char* tag) const noexcept
{
    const auto found = m_tags.find(utf8Prefix(tag, longestTag));
    if (found == m_tags.end())
        return 0;
    return int(std::ranges::count(m_shapes, found->second, &Shape::tag));
}

/// Moves the texts that are left together; they lie in the order of the shapes.
void ShapeList::packTexts()
{
    std::size_t end = 0;
    for (Shape& shape : m_shapes) {
        std::memmove(m_texts.data() + end, m_texts.data() + shape.textStart, shape.textLength);
        shape.textStart = std::uint32_t(end);
        end += shape.textLength;
    }
    m_texts.resize(end);
}

} // namespace ormalux
