// Compares the picture operations with OpenCV's, pixel by pixel, on random and drawn pictures; prints how
// many pixels differ and fails when more do than may.
#include "bench/Pictures.h"
#include "image/VisionImage.h"

#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <random>

namespace {

std::mt19937 engine(7);

int below(int n)
{
    return int(engine() % unsigned(n));
}

/// Noise, steps or a smooth surface, in sizes of every kind.
cv::Mat picture(int largest)
{
    cv::Mat made(1 + below(largest), 1 + below(largest), CV_8U);
    const int kind = below(3), step = 1 + below(40);
    for (int y = 0; y < made.rows; ++y)
        for (int x = 0; x < made.cols; ++x)
            made.at<std::uint8_t>(y, x) =
                std::uint8_t(kind == 0   ? below(256)
                             : kind == 1 ? (x / step * 37 + y / step * 91) % 256
                                         : 128 + 100 * std::sin(x * 0.05) * std::cos(y * 0.07) + below(3));
    return made;
}

struct Count
{
    std::int64_t wrong = 0, total = 0;
    void add(const CKestImage& ours, const cv::Mat& theirs)
    {
        for (int y = 0; y < theirs.rows; ++y)
            for (int x = 0; x < theirs.cols; ++x)
                wrong += ours.GetPixel(x, y) != theirs.at<std::uint8_t>(y, x);
        total += std::int64_t(theirs.total());
    }
    bool report(const char* what, double mayDiffer) const
    {
        const double share = double(wrong) / double(total);
        std::printf("%-28s %lld of %lld pixels differ (%.6f %%)\n", what, (long long)wrong, (long long)total,
                    100 * share);
        return share <= mayDiffer;
    }
};

CKestImage imageOf(const cv::Mat& mat)
{
    return CKestImage(mat.cols, mat.rows, mat.data);
}

bool otsu()
{
    int wrong = 0;
    for (int i = 0; i < 3000; ++i) {
        const cv::Mat in = picture(60);
        cv::Mat out;
        wrong += imageOf(in).GetOtsuThreshold() !=
                 int(cv::threshold(in, out, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU));
    }
    std::printf("%-28s %d of 3000 levels differ\n", "Otsu", wrong);
    return wrong == 0;
}

bool local(int method, const char* what, double mayDiffer)
{
    Count count;
    for (int i = 0; i < 300; ++i) {
        const cv::Mat in = picture(i % 10 == 0 ? 1500 : 300);
        const int window = 3 + 2 * below(i % 10 == 0 ? 500 : 50);
        const double offset = (below(400) - 200) / 10.0;
        cv::Mat out;
        cv::adaptiveThreshold(
            in, out, 255, method == LOCAL_MEAN ? cv::ADAPTIVE_THRESH_MEAN_C : cv::ADAPTIVE_THRESH_GAUSSIAN_C,
            cv::THRESH_BINARY, window, offset);
        CKestImage ours = imageOf(in);
        if (!ours.LocalThreshold(method, window, offset))
            return false;
        count.add(ours, out);
    }
    return count.report(what, mayDiffer);
}

bool morphology()
{
    constexpr int operations[] = {cv::MORPH_ERODE, cv::MORPH_DILATE, cv::MORPH_OPEN,
                                  cv::MORPH_CLOSE, cv::MORPH_TOPHAT, cv::MORPH_GRADIENT};
    constexpr int shapes[] = {cv::MORPH_RECT, cv::MORPH_CROSS, cv::MORPH_ELLIPSE};
    Count count;
    for (int i = 0; i < 1500; ++i) {
        const cv::Mat in = picture(120);
        const int operation = below(6), shape = below(3), width = 1 + below(i % 5 ? 12 : 101),
                  height = 1 + below(i % 7 ? 12 : 101);
        cv::Mat out;
        cv::morphologyEx(in, out, operations[operation],
                         cv::getStructuringElement(shapes[shape], {width, height}));
        CKestImage ours = imageOf(in);
        if (!ours.Morphology(operation, shape, width, height))
            return false;
        count.add(ours, out);
    }
    return count.report("Morphology", 0);
}

bool median(int size, const char* what)
{
    Count count;
    for (int i = 0; i < 300; ++i) {
        const cv::Mat in = picture(300);
        cv::Mat out;
        cv::medianBlur(in, out, size);
        CKestImage ours = imageOf(in);
        size == 3 ? ours.Median3x3() : ours.Median5x5();
        count.add(ours, out);
    }
    return count.report(what, 0);
}

} // namespace

int main()
{
    bool right = otsu();
    right &= morphology();
    right &= local(LOCAL_MEAN, "LocalThreshold, mean", 0);
    right &= local(LOCAL_GAUSSIAN, "LocalThreshold, Gaussian", 0.001);
    right &= median(3, "Median3x3");
    right &= median(5, "Median5x5");
    return right ? 0 : 1;
}
