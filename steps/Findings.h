#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ormalux {

enum class CellType : std::uint8_t
{
    Integer,
    Real,
    Text
};

/// What a number measures: how a scale turns it into units.
enum class Quantity : std::uint8_t
{
    None,
    X,      ///< of a position; its Y is the next column
    Y,      ///< of the position whose X is the column before
    Length, ///< at the row's middle
    Width,  ///< of the row's box, outer edge to outer edge
    Height,
    Distance, ///< between the two ends of the row's place
    Area      ///< at the row's middle
};

struct Column
{
    std::string name;
    CellType type;
    Quantity quantity = Quantity::None;
    int source = -1; ///< of a column in units: the column of pixels that it is made from
};

/// Where a row lies in the picture.
struct Place
{
    enum class Kind : std::uint8_t
    {
        None,
        Point,
        Box,
        Line,
        Circle
    };

    Kind kind = Kind::None;
    double x = 0, y = 0;                   ///< what other steps take of it: a middle, a centroid, an edge
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0; ///< corners, included, or the ends of a line or a distance
    double radius = 0;
    double angle = 0; ///< of a line, in degrees

    static Place point(double x, double y) { return {Kind::Point, x, y, x, y, x, y, 0, 0}; }
    static Place box(const RECT& r)
    {
        return {Kind::Box,
                (r.left + r.right) / 2.0,
                (r.top + r.bottom) / 2.0,
                double(r.left),
                double(r.top),
                double(r.right),
                double(r.bottom),
                0,
                0};
    }
};

struct Cell
{
    enum class Kind : std::uint8_t
    {
        Null,
        Integer,
        Real,
        Text
    };

    Kind kind = Kind::Null;
    union
    {
        std::int64_t integer;
        double real;
        struct
        {
            std::uint32_t at, length;
        } text;
    };

    Cell() : integer(0) {}
    bool isNull() const { return kind == Kind::Null; }
    /// Of both kinds of number; not a number for the others.
    double number() const;
};

/// A shape that shows where a step has looked.
struct Trace
{
    enum class Kind : std::uint8_t
    {
        Line,
        Rectangle, ///< dotted; (x1, y1) and (x2, y2) are corners
        Circle
    };

    Kind kind;
    double x1, y1, x2, y2;
    double radius = 0;
};

/// The shape of a step's findings: some facts about the whole and a list of rows with columns of their types.
struct Layout
{
    std::string stepName; ///< as in "step"
    std::string name;     ///< the step's own, empty when it has none
    std::string list;     ///< plural, as in JSON: "blobs"; empty when there are only facts
    std::vector<Column> facts;
    std::vector<Column> columns; ///< those in units follow those in pixels

    int column(std::string_view columnName) const;
    int fact(std::string_view factName) const;
};

/// What a step found: a table. Taken into use again it keeps its memory.
class Findings
{
public:
    /// No rows, all facts null but the count, which is 0.
    void start(const Layout& layout);
    const Layout& layout() const { return *m_layout; }

    void setFact(std::string_view name, std::int64_t value);
    void setFact(std::string_view name, double value);
    void setFact(std::string_view name, std::string_view value);

    /// Begins a row; its cells follow, in the order of the columns.
    void addRow(const Place& place);
    void add(std::int64_t value);
    void add(int value) { add(std::int64_t(value)); }
    void add(double value);
    void add(std::string_view value);
    void addNull();
    void addTrace(const Trace& trace) { m_traces.push_back(trace); }
    /// Completes the last row: columns that nobody filled are null.
    void finish();
    /// Drops the rows from count on.
    void cut(std::size_t count);

    std::size_t rows() const { return m_places.size(); }
    const Place& place(std::size_t row) const { return m_places[row]; }
    Place& place(std::size_t row) { return m_places[row]; }
    const Cell& cell(std::size_t row, std::size_t column) const
    {
        return m_cells[row * m_layout->columns.size() + column];
    }
    Cell& cell(std::size_t row, std::size_t column)
    {
        return m_cells[row * m_layout->columns.size() + column];
    }
    const Cell& fact(std::size_t index) const { return m_facts[index]; }
    std::string_view text(const Cell& cell) const;
    const std::vector<Trace>& traces() const { return m_traces; }

private:
    Cell textCell(std::string_view value);
    Cell* factNamed(std::string_view name);

    const Layout* m_layout = nullptr;
    std::vector<Cell> m_facts;
    std::vector<Cell> m_cells; ///< row by row
    std::vector<Place> m_places;
    std::vector<Trace> m_traces;
    std::string m_texts; ///< of all text cells
};

} // namespace ormalux
