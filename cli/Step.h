#pragma once

#include "cli/Input.h"
#include "cli/Report.h"
#include "cli/Values.h"
#include "color/VisionImage24.h"
#include "view/DrawObjArray.h"

#include <QImage>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace ormalux::cli {

using Json = nlohmann::ordered_json;

/// What a step works on: the picture as it stands and what was found so far.
struct Workpiece
{
    std::string file;
    CKestImage image;     ///< what gray steps work on; a colour picture's mean until a plane is taken
    CKestImage24 color;   ///< empty for a gray picture
    QImage original;      ///< a colour picture as it was read, or as colour steps left it, for annotation
    bool inColor = false; ///< the colour picture is what the steps have made; image is its mean
    CDrawObjArray shapes;
    std::vector<Findings> findings; ///< one a measuring step
    std::string
        sourceFolder; ///< where relative names of sources are looked for; empty for the working folder

    /// The region that a step names, or the whole picture; throws InputError when it leaves the picture.
    RECT region(const Json& arguments) const;
    std::string sourcePath(const std::string& name) const;
};

enum class Kind
{
    Integer,
    Real,
    Choice,
    Threshold,
    Level,
    Region,
    Point,
    Size,
    Text,
    Files,
    Kernel
};

/// A parameter of a step, as operators write it in a recipe, in a chain and as an option.
struct Parameter
{
    std::string name; ///< with '_' in recipes, with '-' as an option
    Kind kind;
    Json fallback; ///< the value when it is not given; null when it must be
    std::string help;
    double low = 0, high = 0;           ///< of numbers, inclusive
    std::vector<std::string> choices{}; ///< of a choice
    bool optional = false;              ///< may be absent without a value to stand for it
};

struct Step
{
    std::string name;
    std::string help;
    bool measures; ///< whether it finds something; otherwise it changes the picture
    std::vector<Parameter> parameters;
    void (*run)(Workpiece& work, const Json& arguments);
};

/// Every step there is.
const std::vector<Step>& allSteps();
/// Null for an unknown name.
const Step* findStep(const std::string& name);

/// The arguments with every parameter checked and the absent ones filled in. Throws InputError; `where`
/// begins its message, which goes on with the field.
Json checkedArguments(const Step& step, const Json& given, const std::string& where);

/// One parameter's value, checked; text that stands for a number is read as one.
Json checkedValue(const Parameter& parameter, const Json& value, const std::string& where);

// The steps by their files (cli/steps/).
std::vector<Step> imageSteps();
std::vector<Step> planeSteps();
std::vector<Step> blobSteps();
std::vector<Step> matchSteps();
std::vector<Step> gaugeSteps();
std::vector<Step> sampleSteps();
std::vector<Step> histogramSteps();

} // namespace ormalux::cli
