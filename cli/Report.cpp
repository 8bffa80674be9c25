#include "cli/Report.h"

#include "cli/Output.h"
#include "cli/SafeText.h"

#include <algorithm>
#include <cstdio>

namespace ormalux::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string text(const Json& value)
{
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float()) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.4f", value.get<double>());
        return buffer;
    }
    return value.is_null() ? std::string() : value.dump();
}

/// Columns as wide as their widest text; continuation bytes of UTF-8 take no place.
std::size_t width(const std::string& field)
{
    return std::size_t(std::count_if(field.begin(), field.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

} // namespace

void Report::write(const Findings& findings)
{
    switch (m_format) {
    case Format::Table:
        writeTable(findings);
        break;
    case Format::Csv:
        writeCsv(findings);
        break;
    case Format::Json: {
        Json line = {{"file", findings.file}};
        line.update(findings.facts);
        if (!findings.recordName.empty())
            line[findings.recordName] = findings.records;
        putLine(line.dump(-1, ' ', false, Json::error_handler_t::replace));
        break;
    }
    }
    flushOutput();
}

void Report::writeTable(const Findings& findings)
{
    if (m_several) {
        if (m_headed)
            putLine("");
        putLine(shown(findings.file));
        m_headed = true;
    }
    std::string facts;
    for (const auto& [name, value] : findings.facts.items())
        facts += (facts.empty() ? "" : ", ") + name + " " + shown(text(value));
    if (!facts.empty())
        putLine(facts);
    if (findings.records.empty())
        return;

    std::vector<std::vector<std::string>> rows(1);
    for (const auto& [name, value] : findings.records.front().items())
        rows[0].push_back(name);
    for (const Json& record : findings.records) {
        rows.emplace_back();
        for (const auto& [name, value] : record.items())
            rows.back().push_back(shown(text(value)));
    }
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

void Report::writeCsv(const Findings& findings)
{
    const bool whole = findings.recordName.empty();
    const std::vector<Json> rows = whole ? std::vector<Json>{findings.facts} : findings.records;
    for (const Json& record : rows) {
        if (!m_headed) {
            std::string header = "file";
            for (const auto& [name, value] : record.items())
                (header += ',') += csvCell(name);
            putLine(header);
            m_headed = true;
        }
        std::string line = csvCell(findings.file);
        for (const auto& [name, value] : record.items())
            (line += ',') += csvCell(text(value));
        putLine(line);
    }
}

} // namespace ormalux::cli
