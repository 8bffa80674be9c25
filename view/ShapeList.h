#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ormalux {

enum class ShapeKind : std::uint8_t
{
    Line,
    Arrow,
    Rectangle,
    Ellipse,
    Cross,
    Text,
    Label ///< a text for the rectangle; its style is the place wished
};

/// A shape in image coordinates; tag and text lie in the list's pools.
struct Shape
{
    LONG x1 = 0; ///< the first end, the left top corner, or the centre or text position
    LONG y1 = 0;
    LONG x2 = 0;
    LONG y2 = 0;
    COLORREF color = 0;
    std::uint32_t tag = 0;
    std::uint32_t textStart = 0;
    ShapeKind kind = ShapeKind::Line;
    std::uint8_t textLength = 0;
    std::int16_t extent = 0; ///< device pixels: a cross's arm, an arrow's head, a text's height
    std::int16_t width = 0;
    std::int16_t style = 0;
};

/// The longest beginning of text of at most limit bytes that cuts no UTF-8 character; "" for null.
std::string_view utf8Prefix(const char* text, std::size_t limit);

/// Shapes in the order of their adding. Each tag is stored once and texts lie one behind the other, so that
/// 100,000 shapes take some 4 MB.
class ShapeList
{
public:
    /// Adds the shape with its tag and text; nothing happens when memory is short.
    void add(Shape shape, const char* tag, const char* text = nullptr) noexcept;
    void remove(const char* tag) noexcept;
    void clear() noexcept;

    int count() const { return int(m_shapes.size()); }
    int count(const char* tag) const noexcept;
    int capacity() const { return m_capacity; }
    std::span<const Shape> shapes() const { return m_shapes; }
    std::string_view text(const Shape& shape) const
    {
        return std::string_view(m_texts).substr(shape.textStart, shape.textLength);
    }

private:
    struct TagHash : std::hash<std::string_view>
    {
        using is_transparent = void;
    };

    std::uint32_t idOf(std::string_view tag);
    void packTexts();

    static constexpr int step = 100;
    int m_capacity = step;
    std::vector<Shape> m_shapes;
    std::string m_texts;
    std::unordered_map<std::string, std::uint32_t, TagHash, std::equal_to<>> m_tags;
    std::uint32_t m_nextTag = 0;
};

} // namespace ormalux
