#include "steps/Findings.h"

#include <limits>

namespace ormalux {

namespace {

int indexOf(const std::vector<Column>& columns, std::string_view name)
{
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].name == name)
            return int(i);
    return -1;
}

Cell integerCell(std::int64_t value)
{
    Cell cell;
    cell.kind = Cell::Kind::Integer;
    cell.integer = value;
    return cell;
}

Cell realCell(double value)
{
    Cell cell;
    cell.kind = Cell::Kind::Real;
    cell.real = value;
    return cell;
}

} // namespace

double Cell::number() const
{
    return kind == Kind::Integer ? double(integer)
           : kind == Kind::Real  ? real
                                 : std::numeric_limits<double>::quiet_NaN();
}

int Layout::column(std::string_view columnName) const
{
    return indexOf(columns, columnName);
}

int Layout::fact(std::string_view factName) const
{
    return indexOf(facts, factName);
}

void Findings::start(const Layout& layout)
{
    m_layout = &layout;
    m_cells.clear();
    m_places.clear();
    m_traces.clear();
    m_texts.clear();
    m_facts.assign(layout.facts.size(), Cell());
    if (Cell* const count = factNamed("count"))
        *count = integerCell(0);
    if (Cell* const text = factNamed("text"))
        *text = textCell("");
}

Cell* Findings::factNamed(std::string_view name)
{
    const int index = m_layout->fact(name);
    return index < 0 ? nullptr : &m_facts[std::size_t(index)];
}

void Findings::setFact(std::string_view name, std::int64_t value)
{
    if (Cell* const fact = factNamed(name))
        *fact = integerCell(value);
}

void Findings::setFact(std::string_view name, double value)
{
    if (Cell* const fact = factNamed(name))
        *fact = realCell(value);
}

void Findings::setFact(std::string_view name, std::string_view value)
{
    if (Cell* const fact = factNamed(name))
        *fact = textCell(value);
}

void Findings::addRow(const Place& place)
{
    finish();
    m_places.push_back(place);
    if (Cell* const count = factNamed("count"))
        *count = integerCell(std::int64_t(m_places.size()));
}

void Findings::finish()
{
    m_cells.resize(m_places.size() * m_layout->columns.size());
}

void Findings::add(std::int64_t value)
{
    m_cells.push_back(integerCell(value));
}

void Findings::add(double value)
{
    m_cells.push_back(realCell(value));
}

void Findings::add(std::string_view value)
{
    m_cells.push_back(textCell(value));
}

void Findings::addNull()
{
    m_cells.emplace_back();
}

void Findings::cut(std::size_t count)
{
    if (count >= m_places.size())
        return;
    m_places.resize(count);
    m_cells.resize(count * m_layout->columns.size());
    if (Cell* const fact = factNamed("count"))
        *fact = integerCell(std::int64_t(count));
}

std::string_view Findings::text(const Cell& cell) const
{
    return cell.kind == Cell::Kind::Text ? std::string_view(m_texts).substr(cell.text.at, cell.text.length)
                                         : std::string_view();
}

Cell Findings::textCell(std::string_view value)
{
    Cell cell;
    cell.kind = Cell::Kind::Text;
    cell.text.at = std::uint32_t(m_texts.size());
    cell.text.length = std::uint32_t(value.size());
    m_texts.append(value);
    return cell;
}

} // namespace ormalux
