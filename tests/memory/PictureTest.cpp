#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "image/WorkPool.h"
#include "tests/support/FailingMemory.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>

using namespace ormalux;
using namespace testing_support;

namespace {

using Bytes = std::vector<std::uint8_t>;

template <class Image>
Bytes bytesOf(const Image& image)
{
    const auto pixels = image.view();
    return pixels.empty() ? Bytes() : Bytes(pixels.pixels, pixels.pixels + image.GetImageLen());
}

CKestImage grayImage()
{
    Bytes bytes = randomBytes(64 * 50, 3);
    return CKestImage(64, 50, bytes.data());
}

CKestImage24 colorImage()
{
    Bytes bytes = randomBytes(std::size_t(paddedStride(64)) * 50, 4);
    return CKestImage24(64, 50, bytes.data());
}

/// Whatever allocation fails, the operation happens whole or leaves the image, and nothing is thrown.
template <class Image>
void expectWholeOrUnchanged(const char* name, const Image& image,
                            const std::function<void(Image&)>& operation)
{
    SCOPED_TRACE(name);
    Image whole(image);
    operation(whole);
    for (const Fails how : {Fails::Once, Fails::FromThenOn}) {
        Image worked;
        long number = 0;
        for (bool failed = true; failed; ++number) {
            worked = image;
            {
                const FailingMemory failing(number, how);
                operation(worked);
                failed = failing.hasFailed();
            }
            EXPECT_TRUE(bytesOf(worked) == bytesOf(whole) || (failed && bytesOf(worked) == bytesOf(image)));
        }
    }
}

/// Every file is written whole or not at all.
template <class Image>
void expectSavedOrNot(const Image& image)
{
    const auto folder =
        std::filesystem::temp_directory_path() / ("ormalux-memory-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const std::string path = (folder / "saved-in-a-folder-with-a-long-name.bmp").string();
    ASSERT_EQ(image.SaveImage(path.c_str()), 1);
    Image whole;
    ASSERT_EQ(whole.LoadImage(path.c_str()), 1);
    for (const Fails how : {Fails::Once, Fails::FromThenOn}) {
        const long allocations = failEveryAllocation(
            how,
            [&] {
                unlink(path.c_str());
                return image.SaveImage(path.c_str());
            },
            [&](int saved) { EXPECT_EQ(std::filesystem::exists(path), saved == 1); });
        EXPECT_GT(allocations, 0);
        Image loaded;
        failEveryAllocation(
            how, [&] { return loaded.LoadImage(path.c_str()); },
            [&](int read) { EXPECT_TRUE(read == 0 || bytesOf(loaded) == bytesOf(whole)); });
        EXPECT_TRUE(bytesOf(loaded) == bytesOf(whole));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "a file was left behind";
    std::filesystem::remove_all(folder);
}

template <class Image>
void checkOperations(const Image& image)
{
    using Operation = std::function<void(Image&)>;
    const std::pair<const char*, Operation> operations[] = {
        {"Blur", [](Image& i) { i.Blur(); }},
        {"Gassian5x5", [](Image& i) { i.Gassian5x5(); }},
        {"Emboss", [](Image& i) { i.Emboss(); }},
        {"Erode", [](Image& i) { i.Erode(); }},
        {"Offset", [](Image& i) { i.Offset(5, 3); }},
        {"Rotate", [](Image& i) { i.Rotate(30, 20, 33, 0); }},
        {"Rotate90L", [](Image& i) { i.Rotate90L(); }},
        {"Rotate180", [](Image& i) { i.Rotate180(); }},
        {"RotateHorzFlip", [](Image& i) { i.RotateHorzFlip(); }},
        {"RotateVertFlip", [](Image& i) { i.RotateVertFlip(); }},
        {"SetROIPlacement", [](Image& i) { i.SetROIPlacement(3, 3, 20, 20); }},
        {"Gamma", [](Image& i) { i.Gamma(2); }},
    };
    for (const auto& [name, operation] : operations)
        expectWholeOrUnchanged<Image>(name, image, operation);
}

} // namespace

TEST(ShortMemory, OperationsHappenWholeOrNotAtAll)
{
    forEachBandCount([](int) {
        checkOperations(grayImage());
        checkOperations(colorImage());
    });
}

TEST(ShortMemory, PicturesAreSavedWholeOrNotAtAll)
{
    expectSavedOrNot(grayImage());
    expectSavedOrNot(colorImage());
}

TEST(ShortMemory, ColourPlanesAreWholeOrNull)
{
    const CKestImage24 image = colorImage();
    const std::unique_ptr<CKestImage> whole(image.GetHSpaceOfHSI());
    for (const Fails how : {Fails::Once, Fails::FromThenOn})
        EXPECT_GT(failEveryAllocation(
                      how, [&] { return std::unique_ptr<CKestImage>(image.GetHSpaceOfHSI()); },
                      [&](const auto& plane) { EXPECT_TRUE(!plane || bytesOf(*plane) == bytesOf(*whole)); }),
                  0);
}

TEST(ShortMemory, AJobWithoutMemoryForItsThreadsIsDoneByItsCaller)
{
    const auto runsOfBands = [](Job job) {
        std::atomic<int> runs{0};
        runBands(job, 1000, JobCost{1'000'000'000}, [&](const Band& band) { runs += int(band.size()); });
        return runs.load();
    };
    setBandCount(7);
    // Each kind starts its threads at its first job, so each can be met without them once.
    for (int kind = 0; kind < int(Job::Count); ++kind) {
        const FailingMemory failing(kind / 2, kind % 2 ? Fails::Once : Fails::FromThenOn);
        EXPECT_EQ(runsOfBands(Job(kind)), 1000) << kind;
    }
    for (int kind = 0; kind < int(Job::Count); ++kind)
        EXPECT_EQ(runsOfBands(Job(kind)), 1000) << kind;
    setBandCount(0);
}
