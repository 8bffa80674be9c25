#include "steps/Limit.h"

#include "steps/ArgumentText.h"
#include "steps/JsonText.h"

#include <algorithm>
#include <cmath>
#include <regex>

namespace ormalux {

namespace {

constexpr struct
{
    const char* name;
    Limit::Of of;
} reductions[] = {{"min", Limit::Of::Min},
                  {"max", Limit::Of::Max},
                  {"mean", Limit::Of::Mean},
                  {"range", Limit::Of::Range},
                  {"std", Limit::Of::Std}};

/// A pattern that is searched for in steps of text times pattern and without a stack as deep as the text is
/// long, where the library offers that; references to groups need the other way, which searches short texts.
std::function<bool(const std::string&)> searchFor(const std::string& text)
{
    constexpr std::size_t longest = 1000; // compiling and the other way go as deep as brackets and texts
    if (text.size() > longest || std::count(text.begin(), text.end(), '(') > 100)
        throw std::regex_error(std::regex_constants::error_space);
    using Pattern = std::shared_ptr<const std::regex>;
#ifdef __GLIBCXX__
    try {
        constexpr auto steady = std::regex::ECMAScript | std::regex_constants::__polynomial;
        const Pattern pattern = std::make_shared<const std::regex>(text, steady);
        return [pattern](const std::string& found) { return std::regex_search(found, *pattern); };
    } catch (const std::regex_error& error) {
        if (error.code() != std::regex_constants::error_complexity)
            throw;
    }
#endif
    const Pattern pattern = std::make_shared<const std::regex>(text, std::regex::ECMAScript);
    return [pattern](const std::string& found) {
        return found.size() <= longest && std::regex_search(found, *pattern);
    };
}

/// Reads one limit; reports through a function of field, line and reason.
class LimitReader
{
public:
    using Report = std::function<void(const std::string&, int, const std::string&)>;

    LimitReader(const Node& node, const std::vector<LimitTarget>& steps, Report report)
        : m_node(node), m_steps(steps), m_report(std::move(report))
    {}

    Limit read()
    {
        if (!m_node.isObject()) {
            m_report("", m_node.line, "expected an object with the field of");
            return m_limit;
        }
        static const std::vector<std::string> fields{"of",     "nominal", "tolerance", "at_least", "at_most",
                                                     "equals", "matches", "one_of",    "severity"};
        for (std::size_t i = 0; i < m_node.keys.size(); ++i)
            if (std::find(fields.begin(), fields.end(), m_node.keys[i]) == fields.end())
                m_report(m_node.keys[i], m_node.keyLines[i], unknownName("field", m_node.keys[i], fields));
        readOf();
        readEnds();
        readSeverity();
        return m_limit;
    }

private:
    void readOf()
    {
        const Node* const of = m_node.find("of");
        if (!of || !of->isText())
            return m_report("of", of ? of->line : m_node.line,
                            of ? "expected a text as \"gap.distance\"" : "is missing");
        m_limit.name = of->text;
        const auto fault = [&](const std::string& why) {
            m_report("of", of->line, "\"" + oneLine(of->text, 80) + "\": " + why);
        };
        const std::size_t dot = of->text.find('.');
        const auto reference = parseReference(std::string_view(of->text).substr(0, dot));
        if (!reference || dot == std::string::npos)
            return fault("expected STEP.count, STEP.COLUMN, STEP[2].COLUMN or STEP.min(COLUMN)");
        std::vector<std::string> names;
        for (const LimitTarget& target : m_steps) {
            if (!target.name.empty())
                names.push_back(target.name);
            if (target.name == reference->name)
                m_limit.step = int(&target - m_steps.data());
        }
        if (m_limit.step < 0)
            return fault(unknownName("step", reference->name, names));
        readValue(of->text.substr(dot + 1), of->text.find('[') < dot, reference->row, fault);
    }

    template <class Fault>
    void readValue(const std::string& value, bool ofRow, int row, const Fault& fault)
    {
        const Layout& layout = *m_steps[std::size_t(m_limit.step)].layout;
        m_limit.row = row;
        std::string column = value;
        for (const auto& reduction : reductions) {
            const std::string opening = std::string(reduction.name) + "(";
            if (value.starts_with(opening) && value.ends_with(')') && !ofRow) {
                m_limit.of = reduction.of;
                column = value.substr(opening.size(), value.size() - opening.size() - 1);
            }
        }
        if (column == value && !ofRow && value == "count" && !layout.list.empty()) {
            m_limit.of = Limit::Of::Count;
            return;
        }
        if (column == value && !ofRow && layout.fact(value) >= 0) {
            m_limit.of = Limit::Of::Fact;
            m_limit.column = layout.fact(value);
            m_isText = layout.facts[std::size_t(m_limit.column)].type == CellType::Text;
            return;
        }
        std::vector<std::string> columns;
        for (const Column& each : layout.columns)
            columns.push_back(each.name);
        m_limit.column = layout.column(column);
        if (m_limit.column < 0) {
            if (column == value && !ofRow)
                for (const Column& each : layout.facts)
                    columns.push_back(each.name);
            return fault(unknownName("column", column, columns));
        }
        m_isText = layout.columns[std::size_t(m_limit.column)].type == CellType::Text;
        if (column == value)
            m_limit.of = Limit::Of::Cell;
        else if (m_isText)
            fault("the column \"" + column + "\" holds texts");
    }

    std::optional<double> number(const char* field)
    {
        const Node* const given = m_node.find(field);
        if (!given)
            return std::nullopt;
        const auto value = given->isNumber() ? std::optional(given->real)
                           : given->isText() ? parseReal(given->text)
                                             : std::nullopt;
        if (!value)
            m_report(field, given->line, shownValue(*given) + ": expected a number");
        return value.value_or(0);
    }

    void readTolerance(double nominal)
    {
        const Node* const given = m_node.find("tolerance");
        if (!given)
            return m_report("tolerance", m_node.line, "is missing");
        double ends[2] = {-1, -1};
        const bool pair = given->isList() && given->items.size() == 2;
        for (int i = 0; i < 2; ++i) {
            const Node& end = pair ? given->items[std::size_t(i)] : *given;
            ends[i] = end.isNumber() ? end.real : end.isText() ? parseReal(end.text).value_or(-1) : -1;
        }
        if (!(ends[0] >= 0 && ends[1] >= 0))
            return m_report("tolerance", given->line,
                            shownValue(*given) + ": expected a number or [minus, plus], both positive");
        m_limit.low = nominal - ends[0];
        m_limit.high = nominal + ends[1];
    }

    void readEnds()
    {
        int kinds = 0;
        if (const auto nominal = number("nominal")) {
            ++kinds;
            readTolerance(*nominal);
        } else if (const Node* const tolerance = m_node.find("tolerance")) {
            m_report("tolerance", tolerance->line, "goes with \"nominal\"");
        }
        const auto least = number("at_least"), most = number("at_most");
        if (least || most) {
            ++kinds;
            m_limit.low = least;
            m_limit.high = most;
            if (least && most && *least > *most)
                m_report("at_least", m_node.find("at_least")->line, "is above \"at_most\"");
        }
        kinds += readEquals() + readMatches() + readOneOf();
        if (kinds == 0)
            m_report("", m_node.line, "expected nominal, at_least, at_most, equals, matches or one_of");
        else if (kinds > 1)
            m_report("", m_node.line,
                     "takes one of nominal, at_least and at_most, equals, matches and one_of");
        if (m_isText && (m_limit.low || m_limit.high))
            m_report("of", m_node.line,
                     "\"" + m_limit.name + "\" is a text: it takes equals, matches or one_of");
    }

    static std::string asText(const Node& node) { return node.isText() ? node.text : nodeText(node); }

    int readEquals()
    {
        const Node* const given = m_node.find("equals");
        if (!given)
            return 0;
        m_limit.expected = nodeText(*given);
        allow({*given});
        return 1;
    }

    int readOneOf()
    {
        const Node* const given = m_node.find("one_of");
        if (!given)
            return 0;
        m_limit.expected = nodeText(*given);
        if (!given->isList() || given->items.empty())
            m_report("one_of", given->line, shownValue(*given) + ": expected a list");
        allow(given->items);
        return 1;
    }

    void allow(const std::vector<Node>& values)
    {
        std::vector<std::string> texts;
        std::vector<double> numbers;
        for (const Node& value : values) {
            texts.push_back(asText(value));
            const auto read = value.isNumber() ? std::optional(value.real)
                              : value.isText() ? parseReal(value.text)
                                               : std::nullopt;
            if (read)
                numbers.push_back(*read);
        }
        m_limit.fitsText = [texts](const std::string& text) {
            return std::find(texts.begin(), texts.end(), text) != texts.end();
        };
        m_limit.fitsNumber = [numbers](double value) {
            return std::find(numbers.begin(), numbers.end(), value) != numbers.end();
        };
    }

    int readMatches()
    {
        const Node* const given = m_node.find("matches");
        if (!given)
            return 0;
        m_limit.expected = nodeText(*given);
        if (!given->isText()) {
            m_report("matches", given->line, shownValue(*given) + ": expected a regular expression");
            return 1;
        }
        try {
            m_limit.fitsText = [search = searchFor(given->text)](const std::string& text) {
                try {
                    return search(text);
                } catch (const std::regex_error&) {
                    return false; // too much to try
                }
            };
        } catch (const std::regex_error&) {
            m_report("matches", given->line,
                     shownValue(*given) + ": not a regular expression of at most 1000 bytes");
        }
        return 1;
    }

    void readSeverity()
    {
        const Node* const given = m_node.find("severity");
        if (!given)
            return;
        m_limit.warns = given->isText() && given->text == "warn";
        if (!m_limit.warns && !(given->isText() && given->text == "fail"))
            m_report("severity", given->line, shownValue(*given) + ": expected \"warn\" or \"fail\"");
    }

    const Node& m_node;
    const std::vector<LimitTarget>& m_steps;
    Report m_report;
    Limit m_limit;
    bool m_isText = false;
};

void take(Measured& value, const Findings& found, const Cell& cell)
{
    value.known = !cell.isNull() && !(cell.kind == Cell::Kind::Real && !std::isfinite(cell.real));
    value.isText = cell.kind == Cell::Kind::Text;
    value.isWhole = cell.kind == Cell::Kind::Integer;
    value.number = cell.number();
    value.text = found.text(cell);
}

/// Of the column's values that are numbers.
void reduce(const Limit& limit, const Findings& found, Measured& value)
{
    double least = 0, most = 0, sum = 0, count = 0;
    for (std::size_t row = 0; row < found.rows(); ++row) {
        const double number = found.cell(row, std::size_t(limit.column)).number();
        if (!std::isfinite(number))
            continue;
        least = count == 0 ? number : std::min(least, number);
        most = count == 0 ? number : std::max(most, number);
        sum += number;
        ++count;
    }
    value.known = count > 0;
    if (!value.known)
        return;
    const double mean = sum / count;
    double squares = 0;
    for (std::size_t row = 0; row < found.rows(); ++row) {
        const double number = found.cell(row, std::size_t(limit.column)).number();
        if (std::isfinite(number))
            squares += (number - mean) * (number - mean);
    }
    switch (limit.of) {
    case Limit::Of::Min:
        value.number = least;
        break;
    case Limit::Of::Max:
        value.number = most;
        break;
    case Limit::Of::Range:
        value.number = most - least;
        break;
    case Limit::Of::Std:
        value.number = std::sqrt(squares / count);
        break;
    default:
        value.number = mean;
    }
}

} // namespace

Measured measure(const Limit& limit, const Findings& found)
{
    Measured value;
    switch (limit.of) {
    case Limit::Of::Count:
        value.known = value.isWhole = true;
        value.number = double(found.rows());
        break;
    case Limit::Of::Cell:
        if (std::size_t(limit.row) <= found.rows())
            take(value, found, found.cell(std::size_t(limit.row) - 1, std::size_t(limit.column)));
        break;
    case Limit::Of::Fact:
        take(value, found, found.fact(std::size_t(limit.column)));
        break;
    default:
        reduce(limit, found, value);
    }
    return value;
}

bool fits(const Limit& limit, const Measured& value)
{
    if (!value.known)
        return false;
    if (limit.expected) {
        if (!value.isText && limit.fitsNumber)
            return limit.fitsNumber(value.number);
        std::string number;
        if (value.isWhole)
            appendInteger(number, std::int64_t(value.number));
        else
            appendReal(number, value.number);
        return limit.fitsText && limit.fitsText(value.isText ? value.text : number);
    }
    return !value.isText && !(limit.low && value.number < *limit.low) &&
           !(limit.high && value.number > *limit.high);
}

std::vector<Limit>
readLimits(const Node& list, const std::vector<LimitTarget>& steps,
           const std::function<void(std::size_t, const std::string&, int, const std::string&)>& fault)
{
    std::vector<Limit> limits;
    for (const Node& node : list.items) {
        const std::size_t number = limits.size() + 1;
        limits.push_back(
            LimitReader(node, steps, [&](const std::string& field, int line, const std::string& why) {
                fault(number, field, line, why);
            }).read());
    }
    return limits;
}

} // namespace ormalux
