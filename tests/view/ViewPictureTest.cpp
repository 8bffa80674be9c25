#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "platform/File.h"
#include "tests/support/ViewFixture.h"
#include "view/PictureImage.h"
#include "view/PictureWriter.h"
#include "view/ViewImage.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>

#include <memory>
#include <numeric>

namespace {

using testing_support::ViewFixture;

class ViewPicture : public ViewFixture
{
protected:
    std::string path(const char* name) const
    {
        return folder.filePath(QString::fromUtf8(name)).toStdString();
    }
    /// The gray level at a pixel as seen, of a buffer that starts with the bottom row.
    int seenAt(int x, int y) const
    {
        const int stride = (view->GetWidth() + 3) / 4 * 4;
        return bytes[std::size_t((view->GetHeight() - 1 - y) * stride + x)];
    }
    const QTemporaryDir folder;
};

} // namespace

TEST_F(ViewPicture, PixelAccessAddressesTheBufferWithItsOwnSteps)
{
    showRandom(5, 3, 8);
    EXPECT_EQ(view->GetPixel(2, 1), bytes[7]); // the width is the row step, not the padded row
    view->SetPixel(2, 1, 99);
    EXPECT_EQ(view->GetImagePtr()[7], 99);
    EXPECT_EQ(view->GetPixel(INT_MAX, INT_MAX), 0);
    EXPECT_EQ(view->GetPixel(-1, 0), 0);

    showRandom(5, 3, 24);
    EXPECT_EQ(view->GetPixel24(1, 1), bytes[19] * 65536ul + bytes[18] * 256ul + bytes[17]);
    const unsigned long before = view->GetPixel24(4, 1);
    view->SetPixel24(4, 1, before);
    EXPECT_EQ(view->GetPixel24(4, 1), ((before & 255) << 16) + (before & 0xff00) + (before >> 16));
    view->SetPixel24(INT_MAX, INT_MIN, 1);
}

TEST_F(ViewPicture, ImagesReadBackAreThoseSeenWhateverTheRowOrder)
{
    showRandom(7, 5, 8);
    std::unique_ptr<CKestImage> part(view->GetImage(2, 1, 3, 99));
    ASSERT_EQ(part->GetWidth(), 3);
    ASSERT_EQ(part->GetHeight(), 4);
    EXPECT_EQ(part->GetPixel(1, 2), seenAt(3, 3));
    std::unique_ptr<CKestImage> nothing(view->GetImage(INT_MAX, INT_MIN, INT_MAX, INT_MAX));
    EXPECT_TRUE(nothing->IsEmpty());
    EXPECT_TRUE(std::unique_ptr<CKestImage24>(view->GetImage24())->IsEmpty());

    std::unique_ptr<CKestImage> all(view->GetImage());
    view->SetImage(*all); // now top row first
    EXPECT_EQ(view->GetRowOrder(), TOP_DOWN);
    const std::unique_ptr<CKestImage> again(view->GetImage());
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            ASSERT_EQ(again->GetPixel(x, y), seenAt(x, y));

    showRandom(3, 2, 24);
    const std::unique_ptr<CKestImage24> color(view->GetImage24(1, 0, 2, 2));
    const ormalux::ColorView pixels = color->view();
    EXPECT_EQ(pixels.pixels[0], bytes[12 + 3]); // row 0 as seen is the second of the buffer
    EXPECT_EQ(pixels.pixels[8], bytes[3]);      // its rows are padded to 8 bytes
    const std::unique_ptr<CKestImage> gray(view->GetImage());
    EXPECT_EQ(gray->GetPixel(1, 1), (bytes[3] + bytes[4] + bytes[5]) / 3);
}

TEST_F(ViewPicture, LinkedBuffersAreShownInPlaceAndNeverFreed)
{
    std::vector<unsigned char> camera(8 * 4, 10);
    view->SetImagePtrLink(8, 4, 8, camera.data());
    EXPECT_EQ(view->GetImagePtr(), camera.data());
    view->SetPixel(0, 0, 77);
    EXPECT_EQ(camera[0], 77);
    view->SetImagePtrLink(8, 4, 8, camera.data());
    view->CreateImage(8, 4, 8);
    view->SetImagePtrLink(8, 4, 8, view->GetImagePtr()); // the view's own buffer
    view->SetImagePtr(8, 4, 8, view->GetImagePtr());
    EXPECT_EQ(view->GetPixel(3, 3), 0);
    view->SetImagePtr(8, 4, 8, nullptr);
    EXPECT_EQ(view->GetImagePtr(), nullptr);
    view->SetImagePtr(INT_MAX, INT_MAX, 24, camera.data());
    EXPECT_EQ(view->GetImagePtr(), nullptr);
}

TEST_F(ViewPicture, TheOwnBufferLinkedStaysOwnAndIsNeverLeft)
{
    ormalux::ViewImage image;
    image.create(8, 4, 8, ormalux::RowOrder::TopDown);
    std::uint8_t* const own = image.bits();
    std::iota(own, own + 32, std::uint8_t(0));
    image.link(4, 6, 8, own + 8, ormalux::RowOrder::TopDown);
    EXPECT_EQ(image.bits()[23], 31);
    EXPECT_TRUE(image.outgrows(image.bits(), 25)); // still owned
    image.link(4, 7, 8, image.bits(), ormalux::RowOrder::TopDown);
    EXPECT_EQ(image.bits(), nullptr);

    view->CreateImage(8, 4, 8);
    view->SetImagePtr(8, 5, 8, view->GetImagePtr());
    EXPECT_EQ(view->GetImagePtr(), nullptr);
    view->CreateImage(8, 4, 8);
    view->SetImagePtr(8, 2, 24, view->GetImagePtr(), 'R');
    EXPECT_EQ(view->GetImagePtr(), nullptr);
    view->SetImagePtr(INT_MAX, INT_MAX, 24, bytes.data(), 'R');
    EXPECT_EQ(view->GetImagePtr(), nullptr);
    view->SetImagePtr(INT_MAX, 1, INT_MAX, nullptr);
    EXPECT_EQ(view->GetPixel24(0, INT_MAX), 0u);
}

TEST_F(ViewPicture, APlaneOfAColourBufferStandsUprightForEveryWidth)
{
    for (const int width : {3, 4, 5}) {
        showRandom(width, 4, 24);
        const int stride = (width * 3 + 3) / 4 * 4;
        view->SetImagePtr(width, 4, 24, bytes.data(), 'R');
        ASSERT_EQ(view->GetBitCount(), 8);
        const std::unique_ptr<CKestImage> gray(view->GetImage());
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_EQ(gray->GetPixel(x, y), bytes[std::size_t((3 - y) * stride + 3 * x + 2)]);
        view->SetImagePtr(width, 4, 24, bytes.data(), 'O');
        EXPECT_EQ(view->GetBitCount(), 24);
    }
}

TEST_F(ViewPicture, EditsReachThePixelsSeenWithTheirPaddingLeftAlone)
{
    for (const int width : {4, 5}) {
        for (const int order : {BOTTOM_UP, TOP_DOWN}) {
            showRandom(width, 3, 8);
            view->SetRowOrder(order);
            const std::unique_ptr<CKestImage> expected(view->GetImage());
            expected->RotateHorzFlip();
            expected->Offset(1, 0);
            EXPECT_TRUE(view->EditImage(
                [](CKestImage& image) {
                    image.RotateHorzFlip();
                    image.Offset(1, 0);
                },
                nullptr, ormalux::ColorRows::Padded));
            const std::unique_ptr<CKestImage> result(view->GetImage());
            for (int y = 0; y < 3; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(result->GetPixel(x, y), expected->GetPixel(x, y));

            showRandom(width, 3, 24);
            view->SetRowOrder(order);
            const std::unique_ptr<CKestImage> before(view->GetImage());
            const auto turn = [](CKestImage24& image) { image.Rotate180(); };
            EXPECT_TRUE(view->EditImage(nullptr, turn, ormalux::ColorRows::Padded));
            const auto invert = [](CKestImage24& image) { image.Invert(); };
            EXPECT_TRUE(view->EditImage(nullptr, invert, ormalux::ColorRows::Unpadded));
            const std::unique_ptr<CKestImage> after(view->GetImage());
            for (int y = 0; y < 3; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_NEAR(after->GetPixel(x, y), 255 - before->GetPixel(width - 1 - x, 2 - y), 1);
        }
    }
    EXPECT_FALSE(view->EditImage([](CKestImage&) {}, nullptr, ormalux::ColorRows::Padded));
    showRandom(8, 8, 8); // a result of another size replaces the picture
    view->EditImage([](CKestImage& image) { image.SetROIPlacement(2, 3, 5, 7); }, nullptr,
                    ormalux::ColorRows::Padded);
    EXPECT_EQ(view->GetWidth(), 4);
    EXPECT_EQ(view->GetHeight(), 5);
}

TEST_F(ViewPicture, FilesComeBackAsTheyWereSeenAndOnlyOneLoaderReadsPng)
{
    for (const int bits : {8, 24}) {
        showRandom(7, 5, bits);
        const QImage before = view->GetScreen();
        ASSERT_EQ(view->SaveImage(path("그림.bmp").c_str()), 1);
        view->CreateImage(2, 2, 8);
        ASSERT_EQ(view->LoadImage(path("그림.bmp").c_str()), 1);
        EXPECT_EQ(view->GetBitCount(), bits);
        EXPECT_EQ(view->GetRowOrder(), BOTTOM_UP);
        EXPECT_EQ(view->GetZoom(), view->GetFitZoom());
        view->SetImagePtr(7, 5, bits, bytes.data());
        const std::unique_ptr<CKestImage> own(view->GetImage());
        ASSERT_EQ(view->LoadImageGdip(path("그림.bmp").c_str()), 1);
        EXPECT_EQ(view->GetRowOrder(), TOP_DOWN);
        const std::unique_ptr<CKestImage> read(view->GetImage());
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 7; ++x)
                ASSERT_EQ(read->GetPixel(x, y), own->GetPixel(x, y));
    }
    ASSERT_TRUE(ormalux::writePicture(path("a.png").c_str(), view->GetScreen()));
    EXPECT_EQ(view->LoadImage(path("a.png").c_str()), 0);
    EXPECT_EQ(view->GetWidth(), 7);
    EXPECT_EQ(view->LoadImageGdip(path("a.png").c_str()), 1);
    EXPECT_EQ(view->LoadImage(nullptr), 0);
    EXPECT_EQ(view->LoadImageGdip(path("none").c_str()), 0);
    EXPECT_EQ(view->SaveImage("/no/such/folder/a.bmp"), 0);
}

TEST_F(ViewPicture, TheRegionIsSavedAsASourceFileThatLoads)
{
    showRandom(60, 40, 8);
    view->SetTrackerPosition(CRect(-20, -20, -5, -5));
    EXPECT_TRUE(view->SendCommand(3304)); // nothing to save: only a message
    EXPECT_TRUE(view->findChild<QMessageBox*>("sourceMessage"));
    EXPECT_FALSE(view->findChild<QDialog*>("CMatchSrcDlg"));
    view->SetTrackerPosition(CRect(50, 30, 11, 11));
    ASSERT_TRUE(view->SendCommand(3303));
    auto* const keys = view->findChild<QDialog*>("COcrSrcDlg");
    ASSERT_TRUE(keys);
    keys->findChild<QLineEdit*>("key")->setText("7");
    keys->accept();
    auto* const files = view->findChild<QFileDialog*>("sourceFile");
    ASSERT_TRUE(files);
    EXPECT_EQ(files->windowTitle(), "Ocr Source");
    Q_EMIT files->fileSelected(folder.filePath("7.ocs"));
    CMatchSrcArray sources;
    sources.Add(path("7.ocs").c_str());
    ASSERT_EQ(sources.GetCount(), 1);
    const _stMatchSource& source = sources.GetAt(0);
    EXPECT_EQ(source.key, '7');
    EXPECT_EQ(source.width, 40);
    EXPECT_EQ(source.height, 20);
    EXPECT_EQ(source.black_count + source.white_count, 800);
    const std::unique_ptr<CKestImage> region(view->GetImage(11, 11, 40, 20));
    EXPECT_EQ(source.threshold, region->GetAutoThreshold('A', 1));
    EXPECT_EQ(source.data[0], region->GetPixel(0, 0) > source.threshold ? 255 : 0);
}
