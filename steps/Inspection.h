#pragma once

#include "platform/Export.h"

#include <memory>
#include <string>
#include <vector>

class CKestImage;
class CKestImage24;

/// What a column of findings holds.
enum
{
    COLUMN_INTEGER = 0,
    COLUMN_REAL = 1,
    COLUMN_TEXT = 2
};

namespace ormalux {
struct InspectionData;
}

/// What a recipe found in a picture, and how it was judged.
///
/// Handed to CKestRecipe::Run again it keeps its memory. It stays readable when the recipe is gone. One
/// inspection is used by one thread at a time, different ones by any number. Nothing throws.
class ORMALUX_API CKestInspection
{
public:
    CKestInspection();
    CKestInspection(CKestInspection&& other) noexcept;
    CKestInspection& operator=(CKestInspection&& other) noexcept;
    CKestInspection(const CKestInspection&) = delete;
    CKestInspection& operator=(const CKestInspection&) = delete;
    ~CKestInspection();

    /// 1 pass, 0 fail, -1 error. Of a recipe without limits: 1 when something was found.
    int GetVerdict() const;
    /// Whether the verdict is 1.
    bool IsPass() const { return GetVerdict() == 1; }
    /// Why the recipe could not be run, empty when it could.
    const char* GetError() const;
    /// What should be known of the picture, empty as a rule: a 16-bit picture that leaves its depth unused.
    const char* GetWarning() const;

    // Findings: by the step's own name or, where it has none, by its number from 1 ("3"). Rows count from 0.

    /// The rows that the step found; -1 for an unknown step or one that lists nothing.
    int GetCount(const char* step) const;
    /// Reads a number of a row. Returns 1, or 0 when there is none: unknown names, no such row, a text, a
    /// value that is null.
    int GetValue(const char* step, const char* column, int row, double& value) const;
    /// Reads a text of a row; 0 as above.
    int GetText(const char* step, const char* column, int row, std::string& text) const;
    /// Reads what the step says of the whole: its "threshold", "mean" and the like; 0 when there is none.
    int GetValue(const char* step, const char* fact, double& value) const;
    /// Reads the "text" of a reading step; 0 when there is none.
    int GetText(const char* step, std::string& text) const;

    // The tables that the recipe's steps made, for hosts that show or convert all of them.

    /// The number of steps that ran, 0 after an error.
    int GetStepCount() const;
    /// The own name of a step, counted from 0; empty when it has none.
    const char* GetStepName(int step) const;
    /// What a step, counted from 0, does: "blobs", "threshold"; empty for others.
    const char* GetStepKind(int step) const;
    /// The columns of a step's list; -1 for an unknown step or one that lists nothing.
    int GetColumnCount(const char* step) const;
    /// The name of a column, counted from 0; empty for others.
    const char* GetColumnName(const char* step, int column) const;
    /// COLUMN_INTEGER, COLUMN_REAL or COLUMN_TEXT; -1 for unknown ones.
    int GetColumnType(const char* step, int column) const;
    /// Reads the numbers of a column into values, one a row; texts and what is null are not a number. Returns
    /// 1, or 0 with values empty when there is no such column or memory is short.
    int GetColumn(const char* step, int column, std::vector<double>& values) const;

    /// The limits that failed and those that warned.
    int GetFailedCount() const;
    int GetWarnedCount() const;

    /// The line that `ormalux run` prints, without the file's name and the line end. It stands until the next
    /// run or the end of the inspection.
    const char* GetJson() const;
    /// With the time that the run took, in milliseconds, as "ms".
    void ShowTiming(bool shown);
    /// Copies the gray picture as the steps left it. Returns 1, or 0 when there is none or memory is short. A
    /// picture that no step has changed is read where the caller of Run had it.
    int GetImage(CKestImage& image) const;
    /// Copies the colour picture as the steps left it, rows unpadded. Returns 1, or 0 when what they left is
    /// gray, there is none, or memory is short.
    int GetImage(CKestImage24& image) const;

    // For the library's own modules. Without data memory is short.
    bool reserve();
    ormalux::InspectionData& data() { return *m_data; }
    const ormalux::InspectionData& data() const { return *m_data; }

private:
    std::unique_ptr<ormalux::InspectionData> m_data;
};
