#include "steps/Recipe.h"

#include "steps/Runner.h"

#include <new>

using namespace ormalux;

namespace {
constexpr const char* noMemory = "too little memory";
} // namespace

CKestRecipe::CKestRecipe() = default;

CKestRecipe::CKestRecipe(CKestRecipe&& other) noexcept = default;

CKestRecipe& CKestRecipe::operator=(CKestRecipe&& other) noexcept = default;

CKestRecipe::~CKestRecipe() = default;

/// Takes the documents when they are right, else says what is wrong with them.
int CKestRecipe::bind(std::unique_ptr<RecipeDocuments> documents, Faults& faults)
{
    auto plan = documents->bind(faults);
    m_error = faults.text();
    if (!faults.empty())
        return 0;
    m_documents = std::move(documents);
    m_plan = std::move(plan);
    return 1;
}

int CKestRecipe::Load(const char* path)
try {
    Faults faults;
    auto documents = std::make_unique<RecipeDocuments>();
    documents->load(path ? path : "", faults);
    return bind(std::move(documents), faults);
} catch (const std::bad_alloc&) {
    m_error = noMemory;
    return 0;
}

int CKestRecipe::Parse(const char* json, const char* folder)
try {
    Faults faults;
    auto documents = std::make_unique<RecipeDocuments>();
    documents->parse(json ? json : "", folder ? folder : "", faults);
    return bind(std::move(documents), faults);
} catch (const std::bad_alloc&) {
    m_error = noMemory;
    return 0;
}

int CKestRecipe::Set(const char* name, const char* json_value)
try {
    if (!m_documents || !name || !json_value) {
        m_error = "there is no recipe, no name or no value";
        return 0;
    }
    Faults faults;
    auto documents = std::make_unique<RecipeDocuments>(*m_documents);
    m_error.clear();
    return documents->set(name, json_value, m_error) ? bind(std::move(documents), faults) : 0;
} catch (const std::bad_alloc&) {
    m_error = noMemory;
    return 0;
}

const char* CKestRecipe::GetName() const
{
    return m_plan ? m_plan->name.c_str() : "";
}

int CKestRecipe::GetStepCount() const
{
    return m_plan ? int(m_plan->steps.size()) : 0;
}

bool CKestRecipe::HasLimits() const
{
    return m_plan && !m_plan->limits.empty();
}

int CKestRecipe::GetBits() const
{
    return m_plan ? m_plan->bits : 0;
}

int CKestRecipe::Run(const FrameSource& source, CKestInspection& result) const
{
    if (result.reserve())
        runPlan(m_plan, source, result.data());
    return result.GetVerdict();
}

int CKestRecipe::Run(const CKestImage& image, CKestInspection& result) const
{
    const ConstGrayView view = image.view();
    return Run(FrameSource{view.pixels, view.width, view.height, view.stride, PixelFormat::Gray8, 8}, result);
}

int CKestRecipe::Run(const CKestImage24& image, CKestInspection& result) const
{
    const ConstColorView view = image.view();
    return Run(FrameSource{view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width,
                           PixelFormat::Bgr24, 8},
               result);
}
