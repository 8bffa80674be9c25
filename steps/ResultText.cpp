#include "steps/JsonText.h"
#include "steps/Runner.h"

namespace ormalux {

namespace {

/// Members of an object, one after the other.
class Members
{
public:
    explicit Members(std::string& json) : m_json(json), m_first(json.empty() || json.back() == '{') {}

    std::string& begin(std::string_view name)
    {
        if (!m_first)
            m_json += ',';
        m_first = false;
        appendText(m_json, name);
        m_json += ':';
        return m_json;
    }
    void text(std::string_view name, std::string_view value) { appendText(begin(name), value); }
    void real(std::string_view name, double value) { appendReal(begin(name), value); }

private:
    std::string& m_json;
    bool m_first;
};

void appendCell(std::string& json, const Findings& found, const Cell& cell)
{
    switch (cell.kind) {
    case Cell::Kind::Null:
        json += "null";
        break;
    case Cell::Kind::Integer:
        appendInteger(json, cell.integer);
        break;
    case Cell::Kind::Real:
        appendReal(json, cell.real);
        break;
    case Cell::Kind::Text:
        appendText(json, found.text(cell));
        break;
    }
}

void appendBreach(std::string& json, const Breach& breach)
{
    json += '{';
    Members members(json);
    if (!breach.limit) {
        members.text("of", breach.of);
        members.text("reason", breach.reason);
        json += '}';
        return;
    }
    const Limit& limit = *breach.limit;
    members.text("of", limit.name);
    std::string& value = members.begin("value");
    if (!breach.value.known)
        value += "null";
    else if (breach.value.isText)
        appendText(value, breach.value.text);
    else if (breach.value.isWhole)
        appendInteger(value, std::int64_t(breach.value.number));
    else
        appendReal(value, breach.value.number);
    if (limit.low)
        members.real("low", *limit.low);
    if (limit.high)
        members.real("high", *limit.high);
    if (limit.expected)
        members.begin("expected") += *limit.expected;
    json += '}';
}

void appendBreaches(Members& members, const char* name, const std::vector<Breach>& breaches)
{
    if (breaches.empty())
        return;
    std::string& json = members.begin(name);
    char before = '[';
    for (const Breach& breach : breaches) {
        json += before;
        appendBreach(json, breach);
        before = ',';
    }
    json += ']';
}

void appendSteps(std::string& json, const InspectionData& data)
{
    json += '[';
    bool first = true;
    for (std::size_t i = 0; i < data.plan->steps.size(); ++i) {
        const BoundStep& bound = data.plan->steps[i];
        if (!bound.step->reports())
            continue;
        json += first ? "{" : ",{";
        first = false;
        Members members(json);
        members.text("step", bound.step->name);
        if (!bound.name.empty())
            members.text("name", bound.name);
        appendMembers(json, data.findings[i]);
        json += '}';
    }
    json += ']';
}

} // namespace

void appendMembers(std::string& json, const Findings& found)
{
    const Layout& layout = found.layout();
    Members members(json);
    for (std::size_t i = 0; i < layout.facts.size(); ++i)
        appendCell(members.begin(layout.facts[i].name), found, found.fact(i));
    if (layout.list.empty())
        return;
    members.begin(layout.list) += '[';
    for (std::size_t row = 0; row < found.rows(); ++row) {
        json += row == 0 ? "{" : ",{";
        Members cells(json);
        for (std::size_t i = 0; i < layout.columns.size(); ++i)
            appendCell(cells.begin(layout.columns[i].name), found, found.cell(row, i));
        json += '}';
    }
    json += ']';
}

std::string resultMembers(const InspectionData& data)
{
    std::string json;
    Members members(json);
    static constexpr const char* verdicts[] = {"error", "fail", "pass"};
    if (data.plan && data.plan->showsName)
        members.text("name", data.plan->name);
    if (!data.ran()) {
        members.text("error", data.error);
    } else {
        appendSteps(members.begin("steps"), data);
    }
    if (!data.warning.empty())
        members.text("warning", data.warning);
    if (data.judged())
        members.text("verdict", verdicts[data.verdict() + 1]);
    if (data.ran()) {
        appendBreaches(members, "failed", data.failed);
        appendBreaches(members, "warned", data.warned);
    }
    if (data.timed)
        members.real("ms", data.milliseconds);
    return json;
}

} // namespace ormalux
