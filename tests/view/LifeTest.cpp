#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "view/ImageViewWnd.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#if defined(__GLIBC__)
#include <malloc.h>
#include <unistd.h>
#elif defined(_WIN32)
#include <malloc.h>
#endif

namespace {

constexpr int width = 640;
constexpr int height = 480;

/// What an operator does from opening a window to closing it.
void useWindow(int turn, std::vector<std::uint8_t>& linked, const std::vector<std::uint8_t>& picture)
{
    QWidget host;
    CKestWnd window(&host);
    host.resize(300, 200);
    window.resize(300, 200);
    host.show();
    const int bits = turn % 2 ? 24 : 8;
    if (turn % 3 == 0)
        window.SetImagePtrLink(width, height, bits, linked.data());
    else
        window.SetImagePtr(width, height, bits, picture.data());
    window.ZoomFitTo();
    window.AddRectangle(10, 10, 100, 90, 0, 1, RGB(255, 0, 0), "mark");
    window.AddText(10, 10, "98.7 %", 12, RGB(0, 255, 0), "mark");
    window.SetTrackerMode(1);
    window.SetTrackerPosition(CRect(20, 20, 90, 80));
    window.ImageUpdate();
    window.ZoomPlus();
    window.GetView()->ZoomPlus(30); // gray levels show
    window.ImageUpdate();
    delete window.GetImage(5, 5, 50, 40);
    delete window.GetImage24();
    window.Invert();
    window.CreateImage(100 + turn % 7, 80, bits);
    window.RemoveGraphics("mark");
    window.ImageUpdate();
}

struct Memory
{
    std::size_t heap = 0;     ///< bytes that the process has allocated and not freed
    std::size_t resident = 0; ///< bytes of the process in memory
};

Memory memoryNow()
{
    Memory now;
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
    const auto info = mallinfo2();
    now.heap = info.uordblks + info.hblkhd;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        unsigned long whole = 0, resident = 0;
        if (std::fscanf(file, "%lu %lu", &whole, &resident) == 2)
            now.resident = resident * std::size_t(sysconf(_SC_PAGESIZE));
        std::fclose(file);
    }
#elif defined(_WIN32)
    _HEAPINFO block{};
    while (_heapwalk(&block) == _HEAPOK)
        now.heap += block._useflag == _USEDENTRY ? block._size : 0;
#endif
    return now;
}

} // namespace

TEST(Life, AThousandWindowsLeaveNothingBehind)
{
    auto linked = testing_support::randomBytes(std::size_t(width) * height * 3, 1);
    const auto picture = testing_support::randomBytes(std::size_t(width) * height * 3, 2);
    // Caches and tables of the toolkit grow now and then, what leaks grows all the time: the calmest stretch
    // tells.
    constexpr int stretch = 200;
    constexpr double leastLeak = 32;
    double calmest = 1e9;
    Memory first;
    Memory before;
    for (int turn = 1; turn <= 1000; ++turn) {
        useWindow(turn, linked, picture);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
        if (turn % stretch != 0)
            continue;
        const Memory now = memoryNow();
        if (turn == stretch)
            first = now;
        else
            calmest = std::min(calmest, double(now.heap) - double(before.heap));
        before = now;
    }
    EXPECT_LT(calmest, stretch * leastLeak) << "some bytes stay of every window";
    EXPECT_LT(double(before.resident) - double(first.resident), double(8 << 20));
}
