#include "steps/AreaEdit.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <cmath>
#include <new>

namespace ormalux {

namespace {

void orTooLittleMemory(bool done)
{
    if (!done)
        throw std::bad_alloc();
}

/// What the steps that may work in colours share: where, and on what.
struct Target
{
    std::optional<RECT> roi;
    bool color;

    explicit Target(const Arguments& a) : roi(a.region("roi")), color(a.is("on", "color")) {}
    bool inColor(const Work& work) const { return color && !work.color().IsEmpty(); }

    /// An operation on the region of the gray picture or, where that is asked for and there is one, of the
    /// colour picture.
    template <class Edit>
    void change(Work& work, ColorRows rows, const Edit& edit) const
    {
        if (!inColor(work))
            return work.changeGray(roi, edit);
        if (const auto region = work.region(roi)) {
            orTooLittleMemory(editArea(work.colorToChange(), ColorRows::Unpadded, *region, edit, rows));
            work.colorChanged();
        }
    }
};

template <void (CKestImage::*edit)()>
std::unique_ptr<Operation> plain(const Arguments& a, BindContext&)
{
    return operation([roi = a.region("roi")](Work& work, Findings&) {
        work.changeGray(roi, [](CKestImage& image) { (image.*edit)(); });
    });
}

std::unique_ptr<Operation> light(const Arguments& a, BindContext&)
{
    return operation([target = Target(a), brightness = long(a.integer("brightness")),
                      contrast = long(a.integer("contrast"))](Work& work, Findings&) {
        target.change(work, ColorRows::Unpadded, [&](auto& image) { image.Light(brightness, contrast); });
    });
}

std::unique_ptr<Operation> gamma(const Arguments& a, BindContext&)
{
    return operation([target = Target(a), gamma = float(a.real("gamma"))](Work& work, Findings&) {
        target.change(work, ColorRows::Unpadded, [&](auto& image) { image.Gamma(gamma); });
    });
}

std::unique_ptr<Operation> threshold(const Arguments& a, BindContext&)
{
    return operation([roi = a.region("roi"), choice = a.threshold("threshold"), step = a.integer("auto_step"),
                      value = static_cast<unsigned char>(a.integer("value"))](Work& work, Findings&) {
        if (choice.pair)
            return work.changeGray(
                roi, [&](CKestImage& image) { image.DoubleThreshold(choice.high, choice.low, value); });
        const auto region = work.region(roi);
        if (!region)
            return;
        const int level = work.level(choice, *region, step);
        work.changeGray(roi, [level](CKestImage& image) { image.Threshold(level); });
    });
}

std::unique_ptr<Operation> adaptive(const Arguments& a, BindContext&)
{
    return operation(
        [roi = a.region("roi"), fill = static_cast<unsigned char>(a.integer("fill"))](Work& work, Findings&) {
            work.changeGray(roi, [fill](CKestImage& image) { image.AdaptiveThreshold(fill); });
        });
}

std::unique_ptr<Operation> filter(const Arguments& a, BindContext&)
{
    return operation([target = Target(a), entries = a.kernel("kernel"), divisor = long(a.integer("divisor")),
                      offset = long(a.integer("offset"))](Work& work, Findings&) {
        auto kernel = entries;
        const long size = std::lround(std::sqrt(double(kernel.size())));
        const auto correlate = [&](CKestImage& image) {
            image.Filter(kernel.data(), size, divisor, offset, 1);
        };
        if (!target.inColor(work))
            return work.changeGray(target.roi, correlate);
        if (const auto region = work.region(target.roi)) {
            bool done = true;
            const auto channels = [&](CKestImage24& image) { done = editChannels(image, correlate); };
            orTooLittleMemory(
                editArea(work.colorToChange(), ColorRows::Unpadded, *region, channels, ColorRows::Unpadded) &&
                done);
            work.colorChanged();
        }
    });
}

std::unique_ptr<Operation> rotate(const Arguments& a, BindContext&)
{
    const bool own = a.given("center");
    const std::vector<double> center = own ? a.numbers("center") : std::vector<double>{0, 0};
    return operation([target = Target(a), own, center, angle = a.real("angle")](Work& work, Findings&) {
        const auto region = work.region(target.roi);
        if (!region)
            return;
        int cx = (region->right - region->left + 1) / 2, cy = (region->bottom - region->top + 1) / 2;
        if (own) {
            const auto moved = work.placed(center[0], center[1]);
            cx = int(std::floor(moved.x + 0.5)) - int(region->left);
            cy = int(std::floor(moved.y + 0.5)) - int(region->top);
        }
        target.change(work, ColorRows::Padded, [=](auto& image) { image.Rotate(cx, cy, angle, 0); });
    });
}

std::unique_ptr<Operation> offset(const Arguments& a, BindContext&)
{
    return operation(
        [roi = a.region("roi"), dx = a.integer("dx"), dy = a.integer("dy")](Work& work, Findings&) {
            work.changeGray(roi, [=](CKestImage& image) { image.Offset(dx, dy); });
        });
}

std::unique_ptr<Operation> crop(const Arguments& a, BindContext&)
{
    return operation([roi = a.region("roi")](Work& work, Findings&) {
        const auto region = work.region(roi);
        if (!region)
            throw PictureError("nothing is left of the region to crop to");
        work.grayToChange().SetROIPlacement(*region);
        work.dropColor();
    });
}

/// Steps that are told what a colour picture's changes are made to.
Parameter onWhat()
{
    return choice("on", {"gray", "color"},
                  "What is changed of a colour picture: its gray form or the colours", "gray");
}

constexpr double anyInt = 2147483647;

std::vector<Step> withArguments()
{
    std::vector<Step> steps;
    const auto add = [&](const char* name, const char* help, std::vector<Parameter> parameters, auto make) {
        Step step;
        step.name = name;
        step.help = help;
        step.parameters = std::move(parameters);
        step.make = make;
        steps.push_back(std::move(step));
    };
    add("light", "Brighten and raise the contrast",
        {wholeNumber("brightness", -255, 255, "Added to every level"),
         wholeNumber("contrast", -100, 100, "Per cent"), onWhat()},
        light);
    add("gamma", "Bend the levels by a power",
        {realNumber("gamma", 0.01, 100, "Above 1 brightens the dark"), onWhat()}, gamma);
    add("threshold", "Black and white",
        {{"threshold", Kind::Threshold, "auto",
          "auto, a level 0..255, or a range LOW..HIGH that becomes white"},
         wholeNumber("value", 0, 255, "The level of what lies in a range; the rest is 0 for 255, else 255",
                     "255"),
         wholeNumber("auto_step", 1, 65535, "auto looks at every so many rows and columns", "1")},
        threshold);
    add("adaptive", "Black and white by a threshold per row",
        {wholeNumber("fill", 0, 255, "The level of rows without an edge")}, adaptive);
    add("filter", "Correlate with a kernel",
        {{"kernel", Kind::Kernel, "", "The entries of a square, row by row"},
         wholeNumber("divisor", -anyInt, anyInt, "Divides the sum; 0 leaves it", "1"),
         wholeNumber("offset", -anyInt, anyInt, "Added to the quotient", "0"),
         onWhat()},
        filter);
    add("rotate", "Rotate clockwise",
        {realNumber("angle", -360, 360, "Degrees"),
         optional({"center", Kind::Point, "", "The column and row that stay; the middle without one"}),
         onWhat()},
        rotate);
    add("offset", "Shift left and up",
        {wholeNumber("dx", -anyInt, anyInt, "Columns"), wholeNumber("dy", -anyInt, anyInt, "Rows")}, offset);
    return steps;
}

} // namespace

std::vector<Step> imageSteps()
{
    static const struct
    {
        const char* name;
        const char* help;
        decltype(Step::make) make;
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
        {"erode", "Minimum of 3 x 3, in place: dark runs on along the scan", plain<&CKestImage::Erode>},
        {"dilate", "Maximum of 3 x 3, in place: bright runs on along the scan", plain<&CKestImage::Dilate>},
        {"open", "Erode, then dilate, in place", plain<&CKestImage::OpenBox>},
        {"close", "Dilate, then erode, in place", plain<&CKestImage::CloseBox>},
        {"rotate90l", "A quarter turn to the left in the same frame", plain<&CKestImage::Rotate90L>},
        {"rotate90r", "A quarter turn to the right in the same frame", plain<&CKestImage::Rotate90R>},
        {"rotate180", "A half turn", plain<&CKestImage::Rotate180>},
        {"fliph", "Mirror left and right", plain<&CKestImage::RotateHorzFlip>},
        {"flipv", "Mirror top and bottom (widths that are a multiple of 4)",
         plain<&CKestImage::RotateVertFlip>},
    };
    std::vector<Step> steps = withArguments();
    for (const auto& entry : named) {
        steps.emplace_back();
        steps.back().name = entry.name;
        steps.back().help = entry.help;
        steps.back().make = entry.make;
    }
    for (Step& step : steps)
        step.parameters.push_back(regionOnly("Only the region x1,y1,x2,y2, as a picture of its own"));
    Step keep;
    keep.name = "crop";
    keep.help = "Keep a region";
    keep.parameters = {{"roi", Kind::Region, "", "The region x1,y1,x2,y2"}};
    keep.make = crop;
    steps.push_back(std::move(keep));
    return steps;
}

} // namespace ormalux
