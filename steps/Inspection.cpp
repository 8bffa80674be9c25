#include "steps/Inspection.h"

#include "steps/Runner.h"

#include <charconv>
#include <new>

using namespace ormalux;

namespace {

/// The findings of a step, by its name or its number from 1; null for unknown ones.
const Findings* findingsOf(const InspectionData& data, const char* step)
{
    if (!step || !data.ran())
        return nullptr;
    const std::string_view name = step;
    for (std::size_t i = 0; i < data.plan->steps.size(); ++i)
        if (!name.empty() && data.plan->steps[i].name == name)
            return &data.findings[i];
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc() || end != name.data() + name.size() || number < 1 ||
        number > data.findings.size())
        return nullptr;
    return &data.findings[number - 1];
}

const Cell* cellOf(const Findings* found, const char* column, int row)
{
    const int index = found && column ? found->layout().column(column) : -1;
    return index < 0 || row < 0 || std::size_t(row) >= found->rows()
               ? nullptr
               : &found->cell(std::size_t(row), std::size_t(index));
}

const Cell* factOf(const Findings* found, const char* fact)
{
    const int index = found && fact ? found->layout().fact(fact) : -1;
    return index < 0 ? nullptr : &found->fact(std::size_t(index));
}

/// What a step lists; null for unknown ones and those that list nothing.
const Layout* listOf(const Findings* found)
{
    return found && !found->layout().list.empty() ? &found->layout() : nullptr;
}

const Column* columnOf(const Findings* found, int column)
{
    const Layout* const layout = listOf(found);
    return !layout || column < 0 || std::size_t(column) >= layout->columns.size()
               ? nullptr
               : &layout->columns[std::size_t(column)];
}

/// A step that ran, counted from 0.
const BoundStep* stepAt(const InspectionData* data, int step)
{
    return !data || !data->ran() || step < 0 || std::size_t(step) >= data->plan->steps.size()
               ? nullptr
               : &data->plan->steps[std::size_t(step)];
}

int readNumber(const Cell* cell, double& value)
{
    if (!cell || (cell->kind != Cell::Kind::Integer && cell->kind != Cell::Kind::Real))
        return 0;
    value = cell->number();
    return 1;
}

int readText(const Findings* found, const Cell* cell, std::string& text)
try {
    if (!cell || cell->kind != Cell::Kind::Text)
        return 0;
    text = found->text(*cell);
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}

} // namespace

CKestInspection::CKestInspection() : m_data(new (std::nothrow) InspectionData) {}

CKestInspection::CKestInspection(CKestInspection&& other) noexcept = default;

CKestInspection& CKestInspection::operator=(CKestInspection&& other) noexcept = default;

CKestInspection::~CKestInspection() = default;

bool CKestInspection::reserve()
{
    if (!m_data)
        m_data.reset(new (std::nothrow) InspectionData);
    return m_data != nullptr;
}

int CKestInspection::GetVerdict() const
{
    return m_data ? m_data->verdict() : -1;
}

const char* CKestInspection::GetError() const
{
    return m_data ? m_data->error.c_str() : "too little memory";
}

const char* CKestInspection::GetWarning() const
{
    return m_data ? m_data->warning.c_str() : "";
}

int CKestInspection::GetCount(const char* step) const
{
    const Findings* const found = m_data ? findingsOf(*m_data, step) : nullptr;
    return !found || found->layout().list.empty() ? -1 : int(found->rows());
}

int CKestInspection::GetValue(const char* step, const char* column, int row, double& value) const
{
    return m_data ? readNumber(cellOf(findingsOf(*m_data, step), column, row), value) : 0;
}

int CKestInspection::GetText(const char* step, const char* column, int row, std::string& text) const
{
    const Findings* const found = m_data ? findingsOf(*m_data, step) : nullptr;
    return readText(found, cellOf(found, column, row), text);
}

int CKestInspection::GetValue(const char* step, const char* fact, double& value) const
{
    return m_data ? readNumber(factOf(findingsOf(*m_data, step), fact), value) : 0;
}

int CKestInspection::GetText(const char* step, std::string& text) const
{
    const Findings* const found = m_data ? findingsOf(*m_data, step) : nullptr;
    return readText(found, factOf(found, "text"), text);
}

int CKestInspection::GetStepCount() const
{
    return m_data && m_data->ran() ? int(m_data->plan->steps.size()) : 0;
}

const char* CKestInspection::GetStepName(int step) const
{
    const BoundStep* const bound = stepAt(m_data.get(), step);
    return bound ? bound->name.c_str() : "";
}

const char* CKestInspection::GetStepKind(int step) const
{
    const BoundStep* const bound = stepAt(m_data.get(), step);
    return bound ? bound->step->name.c_str() : "";
}

int CKestInspection::GetColumnCount(const char* step) const
{
    const Layout* const layout = listOf(m_data ? findingsOf(*m_data, step) : nullptr);
    return layout ? int(layout->columns.size()) : -1;
}

const char* CKestInspection::GetColumnName(const char* step, int column) const
{
    const Column* const found = columnOf(m_data ? findingsOf(*m_data, step) : nullptr, column);
    return found ? found->name.c_str() : "";
}

int CKestInspection::GetColumnType(const char* step, int column) const
{
    const Column* const found = columnOf(m_data ? findingsOf(*m_data, step) : nullptr, column);
    return found ? int(found->type) : -1;
}

int CKestInspection::GetColumn(const char* step, int column, std::vector<double>& values) const
try {
    values.clear();
    const Findings* const found = m_data ? findingsOf(*m_data, step) : nullptr;
    if (!columnOf(found, column))
        return 0;
    values.reserve(found->rows());
    for (std::size_t row = 0; row < found->rows(); ++row)
        values.push_back(found->cell(row, std::size_t(column)).number());
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}

int CKestInspection::GetFailedCount() const
{
    return m_data ? int(m_data->failed.size()) : 0;
}

int CKestInspection::GetWarnedCount() const
{
    return m_data ? int(m_data->warned.size()) : 0;
}

const char* CKestInspection::GetJson() const
{
    static constexpr const char* noMemory = "{\"error\":\"too little memory\"}";
    if (!m_data)
        return noMemory;
    try {
        const std::lock_guard guard(m_data->lock);
        if (!m_data->hasJson) {
            m_data->json = "{" + resultMembers(*m_data) + "}";
            m_data->hasJson = true;
        }
        return m_data->json.c_str();
    } catch (const std::bad_alloc&) {
        return noMemory;
    }
}

void CKestInspection::ShowTiming(bool shown)
{
    if (!m_data)
        return;
    m_data->timed = shown;
    m_data->hasJson = false;
}

int CKestInspection::GetImage(CKestImage& image) const
{
    if (!m_data || !m_data->ran() || m_data->work.gray().IsEmpty())
        return 0;
    image = m_data->work.gray();
    return !image.IsEmpty();
}

int CKestInspection::GetImage(CKestImage24& image) const
{
    if (!m_data || !m_data->ran() || !m_data->work.inColor())
        return 0;
    image = m_data->work.color();
    return !image.IsEmpty();
}
