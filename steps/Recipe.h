#pragma once

#include "platform/Export.h"
#include "steps/Inspection.h"

#include <memory>
#include <string>

class CKestImage;
class CKestImage24;

namespace ormalux {
class Faults;
class RecipeDocuments;
struct FrameSource;
struct RecipePlan;
} // namespace ormalux

/// A recipe: steps that change a picture and measure in it, and limits that judge what was found.
///
/// A loaded recipe is constant: any number of threads may run it at once, each with an inspection of its own,
/// and get the bytes of one. Its files are read once, by Load, Parse or Set. Nothing throws.
class ORMALUX_API CKestRecipe
{
public:
    /// A recipe without steps, which cannot be run.
    CKestRecipe();
    CKestRecipe(CKestRecipe&& other) noexcept;
    CKestRecipe& operator=(CKestRecipe&& other) noexcept;
    CKestRecipe(const CKestRecipe&) = delete;
    CKestRecipe& operator=(const CKestRecipe&) = delete;
    ~CKestRecipe();

    /// Reads a recipe file; names in it are relative to it. Returns 1, or 0 with the recipe as it was:
    /// GetError then has a line for each fault, `FILE:LINE: step NAME or number, field: what`.
    int Load(const char* path);
    /// The same for a text in UTF-8; names in it are relative to the folder, or to the working folder when it
    /// is null or empty.
    int Parse(const char* json, const char* folder);
    /// Gives a named value another one, as JSON of the kind of its default. Returns 1, or 0 with the recipe
    /// as it was. Not while the recipe runs.
    int Set(const char* name, const char* json_value);
    /// What was wrong with the last Load, Parse or Set; empty when nothing was.
    const char* GetError() const { return m_error.c_str(); }
    /// The recipe's own "name", empty when it has none.
    const char* GetName() const;
    /// The number of steps.
    int GetStepCount() const;
    /// Whether it has limits.
    bool HasLimits() const;
    /// The significant bits of 16-bit pictures that the recipe names, or 0.
    int GetBits() const;

    /// Inspects a picture. Returns the verdict (CKestInspection::GetVerdict); an empty image or too little
    /// memory is an error. The image is not copied unless a step changes it, and never changed.
    int Run(const CKestImage& image, CKestInspection& result) const;
    /// The same for a colour picture, rows unpadded as its colour planes read them.
    int Run(const CKestImage24& image, CKestInspection& result) const;

    // For the library's own modules.
    int Run(const ormalux::FrameSource& source, CKestInspection& result) const;
    const std::shared_ptr<const ormalux::RecipePlan>& plan() const { return m_plan; }

private:
    int bind(std::unique_ptr<ormalux::RecipeDocuments> documents, ormalux::Faults& faults);

    std::unique_ptr<ormalux::RecipeDocuments> m_documents;
    std::shared_ptr<const ormalux::RecipePlan> m_plan;
    std::string m_error;
};
