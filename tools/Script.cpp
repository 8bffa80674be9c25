#include "tools/Script.h"

#include <QString>

#include <array>
#include <span>
namespace ormalux {

namespace {

// Deliberate: these texts are emitted exactly as they stand, spelling included; station programs are compared
// with them.
constexpr std::string_view opening = R"(#include "../LIB2010/ImageViewCtrl/Array.h"
#include "../LIB2010/ImageViewCtrl/VisionImage.h"
#include "../LIB2010/ImageViewCtrl/ImageViewWnd.h"

int nImageWidth=%d;
int nImageHeight=%d;
CVisionImage image(nImageWidth, nImageHeight, pImagePtr);
)";

constexpr std::string_view bodies[] = {
    // DoubleThreshold
    R"(
image.DoubleThreshold(%d, %d, %d);
)",
    // Gamma
    R"(
image.SetROIPlacement(%d, %d, %d, %d); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.
image.Gamma(%f);
)",
    // Light
    R"(
image.SetROIPlacement(%d, %d, %d, %d); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.
image.Light(%d, %d);
)",
    // LineGauge
    R"(LINE_GAUGE_RESULT result;

//첫번째 방법 - 내부 threshold를 이용하는 방법
int ok = image.GetLineGauge(%d, %d, %d, %d, %s, %s, %d, result); // cnt = 0 이면 not found, 1 = found

//두번째 방법 - threshold를 지정하기
int threshold = image.GetAutoThreshold(%d, %d, %d, %d, 4); // 1 ~ 4 Channels
int ok = image.GetLineGauge(%d, %d, %d, %d, %s, %s, %d, threshold, result); // cnt = 0 이면 not found, 1 = found

//result.x1;
//result.y1;
//result.x2;
//result.y2;
//result.center_x;
//result.center_y;
//result.angle;
)",
    // Match
    R"(CMatchSrcArray arMatchSrc;
CMatchResultArray result;

%s
int cnt = image.Match(%d, %d, %d, %d, %d, arMatchSrc, result); // 검색된 결과의 갯수

result.SortLeft(); Or result.SortTop(); Or result.SortRight(); Or result.SortBottom(); Or result.SortYieldAverage();

//result[0].key;
//result[0].left;
//result[0].top;
//result[0].right;
//result[0].bottom;
//result[0].pixel_count;
//result[0].black_yield;
//result[0].white_yield;
//float yield = (result[0].black_yield+result[0].white_yield)/2.0;
)",
    // OcrMatch
    R"(CMatchSrcArray arMatchSrc;
CMatchResultArray result;

%s

int cnt = image.OcrMatch(%d, %d, %d, %d, %d, %d, %d, %d, %d, arMatchSrc, result); // 검색된 결과의 갯수

result.SortLeft(); Or result.SortTop(); Or result.SortRight(); Or result.SortBottom();

//result[0].key;
//result[0].left;
//result[0].top;
//result[0].right;
//result[0].bottom;
//result[0].pixel_count;
//result[0].black_yield;
//result[0].white_yield;
//float yield = (result[0].black_yield+result[0].white_yield)/2.0;
)",
    // PointGauge
    R"(CPixelArray ar;
long best_x, best_y;
// 첫번째 방법 - 내부의 AutoThreshold를 이용하는 방법 4 channels를 이용함
int cnt = image.GetPointGauge(%d, %d, %d, %d, %s, ar); // cnt = ar.GetCount();

// 두번째 방법 - Threshold를 지정하는 방법
int threshold = image.GetAutoThreshold(%d, %d, %d, %d, 4); // 1 ~ 4 Channels
int cnt = image.GetPointGauge(%d, %d, %d, %d, %s, threshold, ar); // cnt = ar.GetCount();

//ar.GetCount();

//ar.SortX(); Or ar.SortY(); Or ar.SortGrayLevel(); Or ar.SortParameter();
//ar[0].x;
//ar[0].y;
//ar[0].gray_level;
//ar[0].parameter;

// 세번째 방법 - threshold를 지정한 best_x, best_y를 하나만 가져오는 방법
int cnt = image.GetPointGauge(%d, %d, %d, %d, %s, threshold, &best_x, &best_y); // cnt = ar.GetCount();

// 네번째 방법 - auto threshold를 이용한 best_x, best_y를 하나만 가져오는 방법
int cnt = image.GetPointGauge(%d, %d, %d, %d, %s, &best_x, &best_y); // cnt = ar.GetCount();
)",
    // Rotate
    R"(
image.Rotate(%d, %d, %f, %d);
)",
    // Threshold
    R"(
image.SetROIPlacement(%d, %d, %d, %d); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.
int threshold = image.GetAutoThreshold(%d);
)",
    // UserFilter
    R"(
image.SetROIPlacement(%d, %d, %d, %d); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.

long kernel[9];

kernel[0] = %d;kernel[1] = %d;kernel[2] = %d;kernel[3] = %d;kernel[4] = %d;kernel[5] = %d;kernel[6] = %d;kernel[7] = %d;kernel[8] = %d;

image.Filter(kernel, %d, %d, %d);
)",
    // BlobList
    R"(CBlobRectArray ar;

int threshold = %s;
int cnt = image.GetBlobList(%d, %d, %d, %d, threshold, %d, %d, %d, %d, %d, ar); // cnt = ar.GetCount();

%s//ar.SortLeft(); Or ar.SortTop(); Or ar.SortRight(); Or ar.SortBottom(); Or ar.SortWidth(); Or ar.SortHeight(); Or ar.SortPixelCount();

//ar[0].left;
//ar[0].top;
//ar[0].right;
//ar[0].bottom;
//ar[0].pixel_count;
)",
};

std::string formatted(const ScriptValue& value)
{
    if (const auto* const text = std::get_if<std::string>(&value))
        return *text;
    if (const auto* const whole = std::get_if<int>(&value))
        return std::to_string(*whole);
    // Not printf: its decimal point follows the locale.
    return QString::number(std::get<double>(value), 'f', 6).toStdString();
}

/// Every "%d", "%f" and "%s" replaced by the next value.
CString filled(std::string_view text, std::span<const ScriptValue> values)
{
    CString result;
    std::size_t next = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        ++i; // over the letter
        if (next < values.size())
            result += formatted(values[next++]);
    }
    return result;
}

} // namespace

CString toolScript(ScriptTemplate which, int width, int height, std::initializer_list<ScriptValue> values)
{
    CString text = filled(opening, std::array<ScriptValue, 2>{width, height});
    return text + filled(bodies[static_cast<int>(which)], {values.begin(), values.size()});
}

CString callScript(int width, int height, std::string_view call)
{
    CString text = filled(opening, std::array<ScriptValue, 2>{width, height});
    return text.append("\nimage.").append(call).append(";\n");
}

CString oneStepScript(int width, int height, std::string_view operation)
{
    return callScript(width, height, std::string(operation) + "()");
}

} // namespace ormalux
