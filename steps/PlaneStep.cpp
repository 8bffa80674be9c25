#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

namespace ormalux {

namespace {

using Take = CKestImage* (CKestImage24::*)() const;

constexpr struct
{
    const char* name;
    Take take; ///< null for the mean of the channels
} planes[] = {
    {"A", nullptr},
    {"B", &CKestImage24::GetBlueSpace},
    {"G", &CKestImage24::GetGreenSpace},
    {"H", &CKestImage24::GetHSpaceOfHSI},
    {"I", &CKestImage24::GetISpaceOfHSI},
    {"R", &CKestImage24::GetRedSpace},
    {"S", &CKestImage24::GetSSpaceOfHSI},
    {"U", &CKestImage24::GetUSpace},
    {"V", &CKestImage24::GetVSpace},
    {"Y", &CKestImage24::GetYSpace},
    {"black", &CKestImage24::GetKSpaceOfCMYK},
    {"cyan", &CKestImage24::GetCSpaceOfCMYK},
    {"magenta", &CKestImage24::GetMSpaceOfCMYK},
    {"value", &CKestImage24::GetVSpaceOfHSV},
    {"yellow", &CKestImage24::GetYSpaceOfCMYK},
};

void takePlane(Work& work, Take take)
{
    if (work.color().IsEmpty())
        throw PictureError("a gray picture has no colour planes");
    CKestImage mean;
    std::unique_ptr<CKestImage> plane;
    if (take)
        plane.reset((work.color().*take)());
    else
        work.color().GetImageWithFilter('A', mean);
    if (take && !plane)
        throw PictureError("too little memory for a plane");
    work.setGray(take ? std::move(*plane) : std::move(mean));
}

std::unique_ptr<Operation> plane(const Arguments& a, BindContext&)
{
    Take take = nullptr;
    for (const auto& plane : planes)
        if (a.is("channel", plane.name))
            take = plane.take;
    return operation([take](Work& work, Findings&) { takePlane(work, take); });
}

} // namespace

std::vector<Step> planeSteps()
{
    std::vector<std::string> names;
    for (const auto& plane : planes)
        names.push_back(plane.name);
    Step step;
    step.name = "plane";
    step.help =
        "Take one plane of a colour picture: its channels (A is their mean), luma and differences, HSI, "
        "CMYK";
    step.parameters = {choice("channel", names, "The plane")};
    step.make = plane;
    return {step};
}

} // namespace ormalux
