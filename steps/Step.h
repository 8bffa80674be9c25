#pragma once

#include "steps/Arguments.h"
#include "steps/Findings.h"
#include "steps/Parameter.h"

#include <memory>
#include <string>
#include <vector>

class CBlobRectArray;

namespace ormalux {

class Work;
class BindContext;

/// A step with its arguments, ready to run on any number of pictures, from any thread.
class Operation
{
public:
    virtual ~Operation() = default;
    /// Changes the picture or adds what is found in it. Throws PictureError when the picture does not allow
    /// it.
    virtual void run(Work& work, Findings& found) const = 0;
};

/// How the rows of a step are drawn.
enum class Look
{
    None,
    NumberedBox,  ///< the row's number at its box
    PartBox,      ///< the row's number and its "yield"
    CharacterBox, ///< the row's first text
    Cross,
    Dot,
    Line,
    Circle
};

/// A row of the table of operations: everything that anybody needs to know of a step.
struct Step
{
    std::string name;
    std::string help;
    bool measures = false; ///< whether it finds something; otherwise it changes the picture
    std::vector<Parameter> parameters;
    std::string list{};          ///< the name of what it lists
    std::vector<Column> facts{}; ///< about the whole; a step without a list may have some, too
    std::vector<Column> columns{};
    Look look = Look::None;
    COLORREF color = 0;
    std::unique_ptr<Operation> (*make)(const Arguments& arguments, BindContext& context) = nullptr;

    bool reports() const { return measures || !facts.empty(); }
    const Parameter* parameter(std::string_view parameterName) const;
};

/// Every step there is.
const std::vector<Step>& allSteps();
/// Null for an unknown name.
const Step* findStep(std::string_view name);
/// The names of the steps, for messages.
std::vector<std::string> stepNames();

// The steps by their files.
std::vector<Step> imageSteps();
std::vector<Step> planeSteps();
std::vector<Step> blobSteps();
std::vector<Step> matchSteps();
std::vector<Step> gaugeSteps();
std::vector<Step> sampleSteps();
std::vector<Step> histogramSteps();
std::vector<Step> neighbourhoodSteps();
std::vector<Step> edgeSteps();
std::vector<Step> relationSteps();
std::vector<Step> featureSteps();
std::vector<Step> frameSteps();
std::vector<Step> readSteps();

// Parameters that many steps share.
Parameter wholeNumber(const char* name, double low, double high, const char* help, std::string fallback = {});
Parameter realNumber(const char* name, double low, double high, const char* help, std::string fallback = {});
Parameter choice(const char* name, std::vector<std::string> choices, const char* help,
                 std::string fallback = {});
Parameter optional(Parameter parameter);
/// "roi": the region that a step is limited to.
Parameter regionOnly(const char* help = "Only inside the region x1,y1,x2,y2");
Parameter levelThreshold();
Parameter objectColor();
/// "min_size" and "max_size"; a fallback that is empty leaves the size open.
Parameter sizeLimit(const char* name, const char* help, std::string fallback = {});

/// "left", "top", "right", "bottom", corners included.
std::vector<Column> boxColumns();
/// Adds a row for each blob, with the columns of the step "blobs".
void listBlobs(CBlobRectArray& blobs, Findings& found);

/// An operation from a function object: run(work, found).
template <class Body>
std::unique_ptr<Operation> operation(Body body)
{
    class Made : public Operation
    {
    public:
        explicit Made(Body made) : m_body(std::move(made)) {}
        void run(Work& work, Findings& found) const override { m_body(work, found); }

    private:
        Body m_body;
    };
    return std::make_unique<Made>(std::move(body));
}

} // namespace ormalux
