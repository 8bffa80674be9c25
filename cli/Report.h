#pragma once

#include "steps/Findings.h"

#include <memory>
#include <string>

namespace ormalux::cli {

enum class Format
{
    Table,
    Csv,
    Json
};

/// Facts of a picture that no step finds, as findings without rows.
class FactSheet
{
public:
    FactSheet() = default;

    /// Begins anew; what is added then are the facts, in their order.
    void clear();
    template <class Value>
    void add(const char* name, const Value& value)
    {
        m_layout->facts.push_back({name, CellType::Text});
        m_values.push_back({name, Cell(), {}});
        set(m_values.back(), value);
    }
    const Findings& findings();

private:
    struct Value
    {
        const char* name;
        Cell number;
        std::string text;
    };
    static void set(Value& value, std::int64_t number);
    static void set(Value& value, int number) { set(value, std::int64_t(number)); }
    static void set(Value& value, double number);
    static void set(Value& value, const std::string& text);
    static void set(Value& value, const char* text) { set(value, std::string(text)); }

    std::unique_ptr<Layout> m_layout = std::make_unique<Layout>();
    std::vector<Value> m_values;
    Findings m_findings;
};

/// Writes findings to standard output, picture after picture, as an aligned table, as CSV with one header and
/// the file as first column, or as one JSON object a line.
class Report
{
public:
    /// With several pictures a table is headed by its file.
    Report(Format format, bool severalPictures) : m_format(format), m_several(severalPictures) {}

    void write(const std::string& file, const Findings& findings);

private:
    void writeTable(const std::string& file, const Findings& findings);
    void writeCsv(const std::string& file, const Findings& findings);

    Format m_format;
    bool m_several;
    bool m_headed = false;
};

} // namespace ormalux::cli
