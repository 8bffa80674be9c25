#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace ormalux::cli {

enum class Format
{
    Table,
    Csv,
    Json
};

/// What was found in one picture: some facts about the whole and a list of records of one kind. Every record
/// has the same fields in the same order.
struct Findings
{
    std::string file;
    nlohmann::ordered_json facts = nlohmann::ordered_json::object();
    std::string recordName; ///< plural, as in JSON: "blobs"; empty when there are only facts
    std::vector<nlohmann::ordered_json> records;
};

/// Writes findings to standard output, picture after picture, as an aligned table, as CSV with one header and
/// the file as first column, or as one JSON object a line.
class Report
{
public:
    /// With several pictures a table is headed by its file.
    Report(Format format, bool severalPictures) : m_format(format), m_several(severalPictures) {}

    void write(const Findings& findings);

private:
    void writeTable(const Findings& findings);
    void writeCsv(const Findings& findings);

    Format m_format;
    bool m_several;
    bool m_headed = false;
};

} // namespace ormalux::cli
