#include "cli/Step.h"
#include "tools/AreaEdit.h"
#include "view/Picture.h"

#include <cmath>
#include <utility>

namespace ormalux::cli {

namespace {

/// A gray operation on the step's region; behind it the picture is gray.
void onGray(Workpiece& work, const Json& arguments, const ToolHost::GrayOperation& operation)
{
    editArea(work.image, work.region(arguments), operation);
    work.inColor = false;
}

/// What a step in colour has changed is what everything behind it sees.
void takeColor(Workpiece& work)
{
    work.image.SetEmpty();
    work.color.GetImageWithFilter('A', work.image);
    const ConstColorView view = std::as_const(work.color).view();
    work.original = toQImage({view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width, 24});
    work.inColor = true;
}

bool wantsColor(const Workpiece& work, const Json& arguments)
{
    return arguments.at("on").get<std::string>() == "color" && !work.color.IsEmpty();
}

/// An operation on the step's region of the gray picture or, where that is asked for and there is one, of the
/// colour picture.
template <class Operation>
void onEither(Workpiece& work, const Json& arguments, ColorRows rows, const Operation& operation)
{
    if (!wantsColor(work, arguments))
        return onGray(work, arguments, operation);
    editArea(work.color, ColorRows::Unpadded, work.region(arguments), operation, rows);
    takeColor(work);
}

template <void (CKestImage::*operation)()>
void plain(Workpiece& work, const Json& arguments)
{
    onGray(work, arguments, [](CKestImage& image) { (image.*operation)(); });
}

void threshold(Workpiece& work, const Json& arguments)
{
    const ThresholdChoice choice = parseThreshold(arguments.at("threshold").get<std::string>());
    const int step = arguments.at("auto_step").get<int>();
    if (choice.pair) {
        const auto value = static_cast<unsigned char>(arguments.at("value").get<int>());
        return onGray(work, arguments,
                      [&](CKestImage& image) { image.DoubleThreshold(choice.high, choice.low, value); });
    }
    const int level = levelOf(choice, work.image, work.region(arguments), work.file, step);
    onGray(work, arguments, [level](CKestImage& image) { image.Threshold(level); });
}

void filter(Workpiece& work, const Json& arguments)
{
    auto kernel = arguments.at("kernel").get<std::vector<long>>();
    const long size = std::lround(std::sqrt(double(kernel.size())));
    const auto correlate = [&](CKestImage& image) {
        image.Filter(kernel.data(), size, arguments.at("divisor").get<long>(),
                     arguments.at("offset").get<long>(), 1);
    };
    if (!wantsColor(work, arguments))
        return onGray(work, arguments, correlate);
    editArea(
        work.color, ColorRows::Unpadded, work.region(arguments),
        [&](CKestImage24& image) { editChannels(image, correlate); }, ColorRows::Unpadded);
    takeColor(work);
}

void rotate(Workpiece& work, const Json& arguments)
{
    const RECT region = work.region(arguments);
    const auto given = arguments.find("center");
    const bool own = given != arguments.end();
    const int cx = own ? (*given)[0].get<int>() - int(region.left) : (region.right - region.left + 1) / 2;
    const int cy = own ? (*given)[1].get<int>() - int(region.top) : (region.bottom - region.top + 1) / 2;
    const double angle = arguments.at("angle").get<double>();
    onEither(work, arguments, ColorRows::Padded, [=](auto& image) { image.Rotate(cx, cy, angle, 0); });
}

Parameter whole(const char* name, double low, double high, const char* help, Json fallback = nullptr)
{
    return {name, Kind::Integer, std::move(fallback), help, low, high};
}

/// Steps that are told what a colour picture's changes are made to.
Parameter onWhat()
{
    return {"on",
            Kind::Choice,
            "gray",
            "What is changed of a colour picture: its gray form or the colours",
            0,
            0,
            {"gray", "color"}};
}

Parameter optional(Parameter parameter)
{
    parameter.optional = true;
    return parameter;
}

constexpr double anyInt = 2147483647;

std::vector<Step> withArguments()
{
    return {
        {"light",
         "Brighten and raise the contrast",
         false,
         {whole("brightness", -255, 255, "Added to every level"), whole("contrast", -100, 100, "Per cent"),
          onWhat()},
         [](Workpiece& work, const Json& a) {
             onEither(work, a, ColorRows::Unpadded, [&](auto& image) {
                 image.Light(a.at("brightness").get<long>(), a.at("contrast").get<long>());
             });
         }},
        {"gamma",
         "Bend the levels by a power",
         false,
         {{"gamma", Kind::Real, nullptr, "Above 1 brightens the dark", 0.01, 100}, onWhat()},
         [](Workpiece& work, const Json& a) {
             onEither(work, a, ColorRows::Unpadded,
                      [&](auto& image) { image.Gamma(a.at("gamma").get<float>()); });
         }},
        {"threshold",
         "Black and white",
         false,
         {{"threshold", Kind::Threshold, "auto",
           "auto, a level 0..255, or a range LOW..HIGH that becomes white"},
          whole("value", 0, 255, "The level of what lies in a range; the rest is 0 for 255, else 255", 255),
          whole("auto_step", 1, 65535, "auto looks at every so many rows and columns", 1)},
         threshold},
        {"adaptive",
         "Black and white by a threshold per row",
         false,
         {whole("fill", 0, 255, "The level of rows without an edge")},
         [](Workpiece& work, const Json& a) {
             onGray(work, a, [&](CKestImage& image) {
                 image.AdaptiveThreshold(static_cast<unsigned char>(a.at("fill").get<int>()));
             });
         }},
        {"filter",
         "Correlate with a kernel",
         false,
         {{"kernel", Kind::Kernel, nullptr, "The entries of a square, row by row"},
          whole("divisor", -anyInt, anyInt, "Divides the sum; 0 leaves it", 1),
          whole("offset", -anyInt, anyInt, "Added to the quotient", 0),
          onWhat()},
         filter},
        {"rotate",
         "Rotate clockwise",
         false,
         {{"angle", Kind::Real, nullptr, "Degrees", -360, 360},
          optional({"center", Kind::Point, nullptr, "The column and row that stay; the middle without one"}),
          onWhat()},
         rotate},
        {"offset",
         "Shift left and up",
         false,
         {whole("dx", -anyInt, anyInt, "Columns"), whole("dy", -anyInt, anyInt, "Rows")},
         [](Workpiece& work, const Json& a) {
             onGray(work, a,
                    [&](CKestImage& image) { image.Offset(a.at("dx").get<int>(), a.at("dy").get<int>()); });
         }},
    };
}

Step crop()
{
    return {"crop",
            "Keep a region",
            false,
            {{"roi", Kind::Region, nullptr, "The region x1,y1,x2,y2"}},
            [](Workpiece& work, const Json& a) {
                work.image.SetROIPlacement(work.region(a));
                work.color.SetEmpty();
                work.inColor = false;
            }};
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
    for (Step& step : steps)
        step.parameters.push_back(
            optional({"roi", Kind::Region, nullptr, "Only the region x1,y1,x2,y2, as a picture of its own"}));
    steps.push_back(crop());
    return steps;
}

} // namespace ormalux::cli
