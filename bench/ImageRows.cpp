#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>

namespace {

using Pixels = std::vector<std::uint8_t>;

/// What the rows of one size work on; the closures share it.
struct Subject
{
    int width, height;
    Pixels input, other, copied;
    CKestImage image, second;
    cv::Mat theirInput, theirOther, theirOutput;
    std::string path, theirPath;

    explicit Subject(const bench::Extent& extent)
        : width(extent.width), height(extent.height), input(bench::naturalPicture(width, height)),
          other(bench::noisePicture(width, height)), copied(input), image(width, height, input.data()),
          second(width, height, other.data()), theirInput(height, width, CV_8U, input.data()),
          theirOther(height, width, CV_8U, other.data()), theirOutput(height, width, CV_8U)
    {
        const auto folder = std::filesystem::temp_directory_path();
        path = (folder / (std::string("ormalux-bench-") + std::to_string(width) + ".bmp")).string();
        theirPath = (folder / (std::string("peer-bench-") + std::to_string(width) + ".bmp")).string();
    }
    ~Subject()
    {
        std::error_code error;
        std::filesystem::remove(path, error);
        std::filesystem::remove(theirPath, error);
    }
    void restore() { image.SetImagePtr(width, height, input.data()); }
    bool shows(const Pixels& expected) const
    {
        return image.GetImageLen() == int(expected.size()) &&
               std::memcmp(image.view().pixels, expected.data(), expected.size()) == 0;
    }
};
using Shared = std::shared_ptr<Subject>;

template <class Value>
Pixels made(const Subject& s, Value value)
{
    Pixels pixels(s.input.size());
    for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x)
            pixels[std::size_t(y) * s.width + x] = value(x, y);
    return pixels;
}

Pixels plainRotate(const Subject& s, int cx, int cy, double angle)
{
    const double r = angle * 0.017453292519943295, ca = std::cos(r), sa = std::sin(r);
    Pixels image(s.input.size()), mask(s.input.size());
    for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) {
            const float dx = float(x - cx), dy = float(y - cy);
            const int tx = int(dx * ca - dy * sa + cx), ty = int(dx * sa + dy * ca + cy);
            if (tx < 0 || tx >= s.width || ty < 0 || ty >= s.height)
                continue;
            image[std::size_t(ty) * s.width + tx] = s.input[std::size_t(y) * s.width + x];
            mask[std::size_t(ty) * s.width + tx] = 1;
        }
    for (std::size_t i = 0; i < image.size(); ++i)
        if (!mask[i])
            image[i] =
                std::uint8_t(((i > 0 ? image[i - 1] : 0) + (i + 1 < image.size() ? image[i + 1] : 0)) >> 1);
    return image;
}

class Rows
{
public:
    Rows(std::vector<bench::Row>& table, const bench::Extent& extent, bool large)
        : m_table(table), m_size(extent.name), m_large(large), m_subject(std::make_shared<Subject>(extent))
    {}

    void add(const char* operation, const char* peer, double goalLarge, double goalSmall,
             std::function<void(Subject&)> ours, std::function<Pixels(const Subject&)> plain,
             std::function<void(Subject&)> theirs)
    {
        const Shared s = m_subject;
        bench::Row row;
        row.operation = operation;
        row.size = m_size;
        row.peer = peer;
        row.goal = m_large ? goalLarge : goalSmall;
        row.check = [=] {
            s->restore();
            ours(*s);
            const bool right = s->shows(plain(*s));
            s->restore();
            return right;
        };
        row.ours = [=] { ours(*s); };
        row.theirs = [=] { theirs(*s); };
        row.limit = [=] { std::memcpy(s->copied.data(), s->input.data(), s->input.size()); };
        m_table.push_back(row);
    }
    bench::Row& last() { return m_table.back(); }
    const Shared& subject() const { return m_subject; }

private:
    std::vector<bench::Row>& m_table;
    std::string m_size;
    bool m_large;
    Shared m_subject;
};

void addEdits(Rows& rows)
{
    rows.add(
        "operator+", "add", 1.0, 1.0, [](Subject& s) { s.image + s.second; },
        [](const Subject& s) {
            return made(s, [&](int x, int y) {
                const std::size_t i = std::size_t(y) * s.width + x;
                return std::uint8_t(s.input[i] + s.other[i]);
            });
        },
        [](Subject& s) { cv::add(s.theirInput, s.theirOther, s.theirOutput); });
    rows.add(
        "operator-", "subtract", 1.0, 1.0, [](Subject& s) { s.image - s.second; },
        [](const Subject& s) {
            return made(s, [&](int x, int y) {
                const std::size_t i = std::size_t(y) * s.width + x;
                return std::uint8_t(std::max(s.input[i] - s.other[i], 0));
            });
        },
        [](Subject& s) { cv::subtract(s.theirInput, s.theirOther, s.theirOutput); });
    rows.add(
        "SetROIPlacement", "clone", 1.0, 1.0,
        [](Subject& s) { s.image.SetROIPlacement(8, 8, s.width - 9, s.height - 9); },
        [](const Subject& s) {
            Pixels part;
            for (int y = 8; y < s.height - 8; ++y) {
                const auto row = s.input.begin() + std::ptrdiff_t(y) * s.width;
                part.insert(part.end(), row + 8, row + s.width - 8);
            }
            return part;
        },
        [](Subject& s) { bench::keep(s.theirInput(cv::Rect(8, 8, s.width - 16, s.height - 16)).clone()); });
    rows.last().prepare = [s = rows.subject()] { s->restore(); };
    rows.add(
        "Offset", "copyTo", 0.5, 0.6, [](Subject& s) { s.image.Offset(13, 7); },
        [](const Subject& s) {
            Pixels moved(s.input.begin() + 7 * s.width + 13, s.input.end());
            moved.resize(s.input.size());
            return moved;
        },
        [](Subject& s) {
            s.theirOutput.setTo(0);
            s.theirInput(cv::Rect(13, 7, s.width - 13, s.height - 7))
                .copyTo(s.theirOutput(cv::Rect(0, 0, s.width - 13, s.height - 7)));
        });
}

void addTransforms(Rows& rows)
{
    rows.add(
        "Rotate180", "flip", 0.08, 0.08, [](Subject& s) { s.image.Rotate180(); },
        [](const Subject& s) { return Pixels(s.input.rbegin(), s.input.rend()); },
        [](Subject& s) { cv::flip(s.theirInput, s.theirOutput, -1); });
    rows.add(
        "RotateHorzFlip", "flip", 0.07, 0.07, [](Subject& s) { s.image.RotateHorzFlip(); },
        [](const Subject& s) {
            return made(s, [&](int x, int y) { return s.input[std::size_t(y + 1) * s.width - 1 - x]; });
        },
        [](Subject& s) { cv::flip(s.theirInput, s.theirOutput, 1); });
    rows.add(
        "RotateVertFlip", "flip", 0.45, 0.7, [](Subject& s) { s.image.RotateVertFlip(); },
        [](const Subject& s) {
            return made(s,
                        [&](int x, int y) { return s.input[std::size_t(s.height - 1 - y) * s.width + x]; });
        },
        [](Subject& s) { cv::flip(s.theirInput, s.theirOutput, 0); });
}

void addRotation(Rows& rows, const char* name, double angle, double goalLarge, double goalSmall)
{
    rows.add(
        name, "warpAffine nearest", goalLarge, goalSmall,
        [angle](Subject& s) { s.image.Rotate(s.width / 2, s.height / 2, angle, 0); },
        [angle](const Subject& s) { return plainRotate(s, s.width / 2, s.height / 2, angle); },
        [angle](Subject& s) {
            const cv::Point2f center(float(s.width / 2), float(s.height / 2));
            cv::warpAffine(s.theirInput, s.theirOutput, cv::getRotationMatrix2D(center, -angle, 1.0),
                           s.theirInput.size(), cv::INTER_NEAREST);
        });
}

void addFiles(Rows& rows)
{
    rows.add(
        "SaveImage", "imwrite", 1.0, 1.0, [](Subject& s) { s.image.SaveImage(s.path.c_str()); },
        [](const Subject& s) {
            const cv::Mat read = cv::imread(s.path, cv::IMREAD_GRAYSCALE);
            return Pixels(read.datastart, read.dataend);
        },
        [](Subject& s) { cv::imwrite(s.theirPath, s.theirInput); });
    rows.add(
        "LoadImage", "imread", 0.6, 0.6,
        [](Subject& s) {
            if (!std::filesystem::exists(s.theirPath))
                cv::imwrite(s.theirPath, s.theirInput);
            s.image.LoadImage(s.theirPath.c_str());
        },
        [](const Subject& s) { return s.input; },
        [](Subject& s) { bench::keep(cv::imread(s.theirPath, cv::IMREAD_GRAYSCALE)); });
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    bool large = true;
    for (const bench::Extent& extent : bench::extents) {
        Rows rows(table, extent, large);
        addEdits(rows);
        addTransforms(rows);
        addRotation(rows, "Rotate by 7.3 degrees", 7.3, 0.6, 0.8);
        addRotation(rows, "Rotate by 45 degrees", 45, 0, 0);
        addRotation(rows, "Rotate by 90 degrees", 90, 0, 0);
        addFiles(rows);
        large = false;
    }
}};

} // namespace
