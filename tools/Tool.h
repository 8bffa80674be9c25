#pragma once

#include "platform/Types.h"
#include "tools/ToolHost.h"

#include <QJsonObject>
#include <QList>

#include <string>
#include <variant>
#include <vector>

namespace ormalux {

/// Where a call is made: what scripts, programs and recipes need to know besides the tool's own values.
struct ToolScene
{
    int width = 0;
    int height = 0;
    CRect area; ///< right and bottom belong to it
    bool color = false;
    std::string pictureFile;

    bool wholePicture() const
    {
        return area.left == 0 && area.top == 0 && area.right == width - 1 && area.bottom == height - 1;
    }
};

ToolScene sceneOf(const ToolHost& host);

using ResultValue = std::variant<long long, double, std::string>;

/// What a tool found: columns named as the command line names them, and the place of each row.
struct ResultList
{
    struct Row
    {
        std::vector<ResultValue> values;
        CRect box; ///< of the picture; right and bottom belong to it
    };
    std::vector<std::string> columns;
    std::vector<Row> rows;
};

/// Gives a step of a recipe the region "roi", unless the whole picture is meant.
void addArea(QJsonObject& step, const ToolScene& scene);

/// Numbers with a fraction have six decimals.
std::string resultText(const ResultValue& value);
/// A header and a line a row, fields quoted where needed.
std::string resultCsv(const ResultList& list);

/// A tool without its widgets: the values that the operator chose and the call they stand for.
class Tool
{
public:
    virtual ~Tool() = default;

    /// The example program of the call.
    virtual CString script(const ToolScene& scene) const = 0;
    /// A whole program against the installed library that makes the same call on a picture file and prints
    /// what the dialog shows (see tools/Program.h).
    virtual CString program(const ToolScene& scene) const = 0;
    /// The call as steps of a recipe.
    virtual QList<QJsonObject> recipeSteps(const ToolScene& scene) const = 0;
};

} // namespace ormalux
