#include "color/ColorRange.h"
#include "measure/BlobFeatures.h"
#include "measure/BlobList.h"
#include "measure/CompareGolden.h"
#include "steps/BindContext.h"
#include "steps/FeatureTable.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <climits>
#include <new>

namespace ormalux {

namespace {

Connectivity connectivityOf(const Arguments& a)
{
    return a.is("connectivity", "8") ? Connectivity::Eight : Connectivity::Four;
}

struct FeatureSearch
{
    std::optional<RECT> roi;
    ThresholdChoice threshold;
    bool white;
    Connectivity connectivity;
    bool dropBorder;
    FeatureChoice choice;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        const int level = work.level(threshold, *region);
        BlobFeatureQuery query{{region->left, region->top, region->right + 1, region->bottom + 1},
                               levelsOfColor(level, white ? 255 : 0),
                               connectivity,
                               dropBorder};
        std::vector<CBlobFeature> blobs;
        if (!blobFeatures(work.gray().view(), query, blobs))
            throw std::bad_alloc();
        found.setFact("threshold", std::int64_t(level));
        choice.list(blobs, true, found);
    }
};

std::unique_ptr<Operation> features(const Arguments& a, BindContext&)
{
    return operation(FeatureSearch{a.region("roi"), a.threshold("threshold"), a.is("object", "white"),
                                   connectivityOf(a), a.is("border", "drop"), FeatureChoice(a)});
}

struct Comparison
{
    std::shared_ptr<const CKestImage> golden;
    std::optional<RECT> roi;
    int threshold, grow;
    Connectivity connectivity;
    FeatureChoice choice;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        const ConstGrayView part = work.gray().view().part(
            region->left, region->top, region->right - region->left + 1, region->bottom - region->top + 1);
        CKestImage marks(part.width, part.height);
        if (marks.IsEmpty())
            throw std::bad_alloc();
        if (compareGolden(part, golden->view(), alignment(work, *region), threshold, grow, marks.view()) == 0)
            throw PictureError("compare: the picture does not overlap the golden one");
        std::vector<CBlobFeature> blobs;
        const BlobFeatureQuery query{{0, 0, part.width, part.height}, {255, 255}, connectivity};
        if (!blobFeatures(std::as_const(marks).view(), query, blobs))
            throw std::bad_alloc();
        choice.list(blobs, false, found, region->left, region->top);
    }

private:
    /// Where the region's pixels lie on the golden picture: the way back through the frame.
    static CAlignment alignment(const Work& work, const RECT& region)
    {
        CAlignment way;
        way.x = region.left;
        way.y = region.top;
        if (!work.frame)
            return way;
        const auto origin = work.frame->back(region.left, region.top);
        const auto right = work.frame->back(region.left + 1.0, region.top);
        const auto below = work.frame->back(region.left, region.top + 1.0);
        way.xx = right.x - origin.x;
        way.yx = right.y - origin.y;
        way.xy = below.x - origin.x;
        way.yy = below.y - origin.y;
        way.x = origin.x;
        way.y = origin.y;
        return way;
    }
};

std::unique_ptr<Operation> compare(const Arguments& a, BindContext& context)
{
    return operation(Comparison{context.picture("golden", a.text("golden")), a.region("roi"),
                                a.integer("threshold"), a.integer("grow"), connectivityOf(a),
                                FeatureChoice(a)});
}

struct ColorSearch
{
    std::optional<RECT> roi;
    bool byHue;
    COLORREF low = 0, high = 0;
    HueRange hues{};
    SIZE smallest, largest;

    void operator()(Work& work, Findings& found) const
    {
        if (work.color().IsEmpty())
            throw PictureError("a gray picture has no colours to look for");
        const CKestImage24& color = work.color();
        if (color.GetWidth() != work.width() || color.GetHeight() != work.height())
            throw PictureError("the colours are gone: a step before has changed the picture's size");
        const auto region = work.region(roi);
        if (!region)
            return;
        CBlobRectArray blobs;
        const int right = region->right + 1, bottom = region->bottom + 1;
        if (byHue)
            color.GetHueRangeBlobList(region->left, region->top, right, bottom, hues.lowHue, hues.highHue,
                                      hues.lowSaturation, hues.highSaturation, hues.lowValue, hues.highValue,
                                      smallest.cx, largest.cx, smallest.cy, largest.cy, blobs);
        else
            color.GetColorRangeBlobList(region->left, region->top, right, bottom, low, high, smallest.cx,
                                        largest.cx, smallest.cy, largest.cy, blobs);
        listBlobs(blobs, found);
    }
};

COLORREF colorOf(const std::vector<double>& c)
{
    return RGB(int(c[0]), int(c[1]), int(c[2]));
}

std::unique_ptr<Operation> colorBlobs(const Arguments& a, BindContext& context)
{
    ColorSearch search{a.region("roi"),
                       a.given("hue"),
                       0,
                       0,
                       {},
                       a.size("min_size"),
                       a.size("max_size", {INT_MAX, INT_MAX})};
    const bool both = a.given("low") && a.given("high");
    if (search.byHue ? a.given("low") || a.given("high") : !both)
        context.fault(search.byHue     ? "hue"
                      : a.given("low") ? "high"
                                       : "low",
                      "takes \"low\" and \"high\", or \"hue\"");
    if (both) {
        search.low = colorOf(a.numbers("low"));
        search.high = colorOf(a.numbers("high"));
    }
    if (search.byHue) {
        const auto &hue = a.numbers("hue"), &saturation = a.numbers("saturation"),
                   &value = a.numbers("value");
        search.hues = {hue[0], hue[1], int(saturation[0]), int(saturation[1]), int(value[0]), int(value[1])};
        if (!isValid(search.hues))
            context.fault("hue", "saturation and value must be in order");
    }
    return operation(search);
}

Parameter pairOf(const char* name, double high, const char* help, std::string fallback)
{
    Parameter parameter{name, Kind::Pair, std::move(fallback), help, 0, high};
    parameter.optional = parameter.fallback.empty();
    return parameter;
}

} // namespace

std::vector<Step> featureSteps()
{
    Step measured;
    measured.name = "features";
    measured.help = "Measure connected regions: area, outline, axes, holes, mean level";
    measured.measures = true;
    measured.parameters = {levelThreshold(), objectColor(), regionOnly(),
                           choice("border", {"keep", "drop"}, "What touches the region's border", "keep")};
    for (const Parameter& parameter : featureParameters())
        measured.parameters.push_back(parameter);
    measured.list = "features";
    measured.facts = {{"threshold", CellType::Integer}, {"count", CellType::Integer}};
    measured.columns = featureColumns();
    measured.look = Look::NumberedBox;
    measured.color = RGB(255, 64, 64);
    measured.make = features;

    Step compared = measured;
    compared.name = "compare";
    compared.help = "Find where the picture differs from a golden one";
    compared.parameters = {
        {"golden", Kind::Text, "", "The picture of a part that is right, aligned by the frame"},
        wholeNumber("threshold", 0, 255, "Levels that a pixel may differ by", "20"),
        wholeNumber("grow", 0, 100, "Forgives what lies within so many pixels of a fitting level", "1"),
        regionOnly()};
    for (const Parameter& parameter : featureParameters())
        compared.parameters.push_back(parameter);
    compared.facts = {{"count", CellType::Integer}};
    compared.make = compare;

    Step colors = blobSteps().front();
    colors.name = "color-blobs";
    colors.help = "List the connected regions of a range of colours";
    const auto channels = [](const char* name, const char* help) {
        return optional({name, Kind::Triple, "", help, 0, 255});
    };
    colors.parameters = {
        channels("low", "Least red, green and blue"),
        channels("high", "Greatest red, green and blue"),
        pairOf("hue", 360, "Or a range of hues in degrees, through 0 when the first is larger", {}),
        pairOf("saturation", 255, "Range of saturation beside a hue", "0,255"),
        pairOf("value", 255, "Range of value beside a hue", "0,255"),
        regionOnly(),
        sizeLimit("min_size", "Smallest width and height, WxH", "2x2"),
        sizeLimit("max_size", "Largest width and height, WxH")};
    colors.facts = {{"count", CellType::Integer}};
    colors.make = colorBlobs;
    return {measured, compared, colors};
}

} // namespace ormalux
