#include "cli/Step.h"

#include <map>
#include <memory>

namespace ormalux::cli {

namespace {

const std::map<std::string, CKestImage* (CKestImage24::*)() const> planes{
    {"R", &CKestImage24::GetRedSpace},
    {"G", &CKestImage24::GetGreenSpace},
    {"B", &CKestImage24::GetBlueSpace},
    {"Y", &CKestImage24::GetYSpace},
    {"U", &CKestImage24::GetUSpace},
    {"V", &CKestImage24::GetVSpace},
    {"H", &CKestImage24::GetHSpaceOfHSI},
    {"S", &CKestImage24::GetSSpaceOfHSI},
    {"I", &CKestImage24::GetISpaceOfHSI},
    {"value", &CKestImage24::GetVSpaceOfHSV},
    {"cyan", &CKestImage24::GetCSpaceOfCMYK},
    {"magenta", &CKestImage24::GetMSpaceOfCMYK},
    {"yellow", &CKestImage24::GetYSpaceOfCMYK},
    {"black", &CKestImage24::GetKSpaceOfCMYK},
};

void takePlane(Workpiece& work, const Json& arguments)
{
    if (work.color.IsEmpty())
        throw InputError(work.file + ": a gray picture has no colour planes");
    work.inColor = false;
    const std::string name = arguments.at("channel").get<std::string>();
    if (name == "A") {
        work.image.SetEmpty();
        CKestImage target;
        work.color.GetImageWithFilter('A', target);
        work.image = target;
        return;
    }
    const std::unique_ptr<CKestImage> plane((work.color.*planes.at(name))());
    if (!plane)
        throw InputError(work.file + ": too little memory for a plane");
    work.image = *plane;
}

} // namespace

std::vector<Step> planeSteps()
{
    std::vector<std::string> names{"A"};
    for (const auto& [name, member] : planes)
        names.push_back(name);
    return {{"plane",
             "Take one plane of a colour picture: its channels (A is their mean), luma and differences, HSI, "
             "CMYK",
             false,
             {{"channel", Kind::Choice, nullptr, "The plane", 0, 0, names}},
             takePlane}};
}

} // namespace ormalux::cli
