#include "cli/Report.h"

#include "cli/Output.h"
#include "platform/SafeText.h"
#include "steps/JsonText.h"
#include "steps/Runner.h"

#include <algorithm>
#include <cstdio>

namespace ormalux::cli {

namespace {

std::string text(const Findings& findings, const Cell& cell)
{
    if (cell.kind == Cell::Kind::Integer)
        return std::to_string(cell.integer);
    if (cell.kind != Cell::Kind::Real)
        return std::string(findings.text(cell));
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%.4f", cell.real);
    return buffer;
}

/// Columns as wide as their widest text; continuation bytes of UTF-8 take no place.
std::size_t width(const std::string& field)
{
    return std::size_t(std::count_if(field.begin(), field.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void putAligned(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::size_t> widths(rows[0].size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += std::string(widths[i] - width(row[i]) + (i ? 2 : 0), ' ') + row[i];
        putLine(line);
    }
}

} // namespace

void FactSheet::clear()
{
    m_layout->facts.clear();
    m_values.clear();
}

void FactSheet::set(Value& value, std::int64_t number)
{
    value.number.kind = Cell::Kind::Integer;
    value.number.integer = number;
}

void FactSheet::set(Value& value, double number)
{
    value.number.kind = Cell::Kind::Real;
    value.number.real = number;
}

void FactSheet::set(Value& value, const std::string& text)
{
    value.number.kind = Cell::Kind::Text;
    value.text = text;
}

const Findings& FactSheet::findings()
{
    m_findings.start(*m_layout);
    for (const Value& value : m_values)
        if (value.number.kind == Cell::Kind::Integer)
            m_findings.setFact(value.name, value.number.integer);
        else if (value.number.kind == Cell::Kind::Real)
            m_findings.setFact(value.name, value.number.real);
        else
            m_findings.setFact(value.name, std::string_view(value.text));
    return m_findings;
}

void Report::write(const std::string& file, const Findings& findings)
{
    switch (m_format) {
    case Format::Table:
        writeTable(file, findings);
        break;
    case Format::Csv:
        writeCsv(file, findings);
        break;
    case Format::Json: {
        std::string line = "{\"file\":";
        appendText(line, file);
        appendMembers(line, findings);
        putLine(line + "}");
        break;
    }
    }
    flushOutput();
}

void Report::writeTable(const std::string& file, const Findings& findings)
{
    if (m_several) {
        if (m_headed)
            putLine("");
        putLine(shown(file));
        m_headed = true;
    }
    const Layout& layout = findings.layout();
    std::string facts;
    for (std::size_t i = 0; i < layout.facts.size(); ++i)
        facts += (facts.empty() ? "" : ", ") + layout.facts[i].name + " " +
                 shown(text(findings, findings.fact(i)));
    if (!facts.empty())
        putLine(facts);
    if (findings.rows() == 0)
        return;
    std::vector<std::vector<std::string>> rows(1);
    for (const Column& column : layout.columns)
        rows[0].push_back(column.name);
    for (std::size_t row = 0; row < findings.rows(); ++row) {
        rows.emplace_back();
        for (std::size_t i = 0; i < layout.columns.size(); ++i)
            rows.back().push_back(shown(text(findings, findings.cell(row, i))));
    }
    putAligned(rows);
}

void Report::writeCsv(const std::string& file, const Findings& findings)
{
    const Layout& layout = findings.layout();
    const bool whole = layout.list.empty();
    const auto& columns = whole ? layout.facts : layout.columns;
    const std::size_t rows = whole ? 1 : findings.rows();
    for (std::size_t row = 0; row < rows; ++row) {
        if (!m_headed) {
            std::string header = "file";
            for (const Column& column : columns)
                (header += ',') += csvCell(column.name);
            putLine(header);
            m_headed = true;
        }
        std::string line = csvCell(file);
        for (std::size_t i = 0; i < columns.size(); ++i)
            (line += ',') += csvCell(text(findings, whole ? findings.fact(i) : findings.cell(row, i)));
        putLine(line);
    }
}

} // namespace ormalux::cli
