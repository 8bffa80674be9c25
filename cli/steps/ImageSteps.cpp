#include "cli/Step.h"

#include <utility>

namespace ormalux::cli {

namespace {

template <void (CKestImage::*operation)()>
void plain(Workpiece& work, const Json&)
{
    (work.image.*operation)();
}

void threshold(Workpiece& work, const Json& arguments)
{
    const ThresholdChoice choice = parseThreshold(arguments.at("threshold").get<std::string>());
    if (choice.range())
        work.image.DoubleThreshold(choice.high, choice.low, 255);
    else
        work.image.Threshold(levelOf(choice, work.image, work.region(Json::object()), work.file));
}

Parameter whole(const char* name, double low, double high, const char* help)
{
    return {name, Kind::Integer, nullptr, help, low, high};
}

constexpr double anyInt = 2147483647;

std::vector<Step> withArguments()
{
    return {
        {"light",
         "Brighten and raise the contrast",
         false,
         {whole("brightness", -255, 255, "Added to every level"), whole("contrast", -100, 100, "Per cent")},
         [](Workpiece& work, const Json& a) {
             work.image.Light(a.at("brightness").get<long>(), a.at("contrast").get<long>());
         }},
        {"gamma",
         "Bend the levels by a power",
         false,
         {{"gamma", Kind::Real, nullptr, "Above 1 brightens the dark", 0.01, 100}},
         [](Workpiece& work, const Json& a) { work.image.Gamma(a.at("gamma").get<float>()); }},
        {"threshold",
         "Black and white",
         false,
         {{"threshold", Kind::Threshold, "auto",
           "auto, a level 0..255, or a range LOW..HIGH that becomes white"}},
         threshold},
        {"adaptive",
         "Black and white by a threshold per row",
         false,
         {whole("fill", 0, 255, "The level of rows without an edge")},
         [](Workpiece& work, const Json& a) {
             work.image.AdaptiveThreshold(static_cast<unsigned char>(a.at("fill").get<int>()));
         }},
        {"crop",
         "Keep a region",
         false,
         {{"roi", Kind::Region, nullptr, "The region x1,y1,x2,y2"}},
         [](Workpiece& work, const Json& a) {
             work.image.SetROIPlacement(work.region(a));
             work.color.SetEmpty();
         }},
        {"rotate",
         "Rotate clockwise about the centre",
         false,
         {{"angle", Kind::Real, nullptr, "Degrees", -360, 360}},
         [](Workpiece& work, const Json& a) {
             work.image.Rotate(work.image.GetWidth() / 2, work.image.GetHeight() / 2,
                               a.at("angle").get<double>(), 0);
         }},
        {"offset",
         "Shift left and up",
         false,
         {whole("dx", -anyInt, anyInt, "Columns"), whole("dy", -anyInt, anyInt, "Rows")},
         [](Workpiece& work, const Json& a) {
             work.image.Offset(a.at("dx").get<int>(), a.at("dy").get<int>());
         }},
    };
}

} // namespace

std::vector<Step> imageSteps()
{
    using Run = void (*)(Workpiece&, const Json&);
    static const struct
    {
        const char* name;
        const char* help;
        Run run;
    } named[] = {
        {"invert", "Swap dark and bright", plain<&CKestImage::Invert>},
        {"equalize", "Equalise the histogram", plain<&CKestImage::HistoEqualize>},
        {"normalize", "Stretch the levels between the 1 % ends", plain<&CKestImage::HistoNormalize>},
        {"stretch", "Stretch the occupied levels", plain<&CKestImage::HistoStretch>},
        {"log", "Lift the dark by a logarithm", plain<&CKestImage::HistoLog>},
        {"root", "Lift the dark by a square root", plain<&CKestImage::HistoRoot>},
        {"autocontrast", "Stretch the levels between the 3 % ends", plain<&CKestImage::AutoContrast>},
        {"sharpen", "Sharpen", plain<&CKestImage::Sharpen>},
        {"blur", "Mean of 3 x 3", plain<&CKestImage::Blur>},
        {"soften", "Weighted mean of 3 x 3", plain<&CKestImage::Soften>},
        {"gassian3x3", "Gaussian of 3 x 3", plain<&CKestImage::Gassian3x3>},
        {"gassian5x5", "Gaussian of 5 x 5", plain<&CKestImage::Gassian5x5>},
        {"emboss", "Emboss", plain<&CKestImage::Emboss>},
        {"edge", "Dark edges on white", plain<&CKestImage::Edge>},
        {"laplacian", "Bright edges on black", plain<&CKestImage::Laplacian>},
        {"erode", "Minimum of 3 x 3, in place", plain<&CKestImage::Erode>},
        {"dilate", "Maximum of 3 x 3, in place", plain<&CKestImage::Dilate>},
        {"open", "Erode, then dilate", plain<&CKestImage::OpenBox>},
        {"close", "Dilate, then erode", plain<&CKestImage::CloseBox>},
        {"rotate90l", "A quarter turn to the left in the same frame", plain<&CKestImage::Rotate90L>},
        {"rotate90r", "A quarter turn to the right in the same frame", plain<&CKestImage::Rotate90R>},
        {"rotate180", "A half turn", plain<&CKestImage::Rotate180>},
        {"fliph", "Mirror left and right", plain<&CKestImage::RotateHorzFlip>},
        {"flipv", "Mirror top and bottom (widths that are a multiple of 4)",
         plain<&CKestImage::RotateVertFlip>},
    };
    std::vector<Step> steps = withArguments();
    for (const auto& entry : named)
        steps.push_back({entry.name, entry.help, false, {}, entry.run});
    return steps;
}

} // namespace ormalux::cli
