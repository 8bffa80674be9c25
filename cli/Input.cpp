#include "cli/Input.h"

#include "cli/Output.h"
#include "cli/QuietLibraries.h"
#include "platform/Path.h"
#include "steps/ArgumentText.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"

#include <algorithm>

namespace ormalux::cli {

namespace {

void save(const std::string& name, const PixelSource& picture)
{
    std::string error;
    if (!writePicture(name.c_str(), picture, &error))
        throw InputError(error);
}

std::string orRefusal(bool right, const char* form)
{
    return right ? std::string() : std::string("expected ") + form;
}

} // namespace

Picture readPictureFile(const std::string& file, bool takesDepth)
{
    std::string error;
    Picture picture;
    {
        const QuietLibraries quiet;
        picture = ormalux::readPicture(file.c_str(), &error);
    }
    if (picture.empty())
        throw InputError(error);
    PictureOrigin origin = picture.origin;
    if (takesDepth && !picture.deep.empty())
        origin.bits = origin.usedBits = 8;
    for (const std::string& loss : whatWasCut(origin))
        complain("warning: '" + file + "': " + loss);
    return picture;
}

std::shared_ptr<const CKestImage> readGrayPicture(const std::string& file, std::string& why)
try {
    Workpiece piece;
    loadPicture(file, piece);
    return std::make_shared<CKestImage>(piece.work.gray());
} catch (const InputError& error) {
    why = error.what();
    return nullptr;
}

FrameSource frameOf(const Picture& picture, int bits)
{
    if (!picture.deep.empty())
        return {picture.deep.data(), picture.width, picture.height, std::ptrdiff_t(2) * picture.width,
                PixelFormat::Gray16, bits,          bits > 0};
    const int channels = picture.isGray() ? 1 : 3;
    return {picture.pixels.data(),
            picture.width,
            picture.height,
            std::ptrdiff_t(channels) * picture.width,
            picture.isGray() ? PixelFormat::Gray8 : PixelFormat::Bgr24,
            8,
            false};
}

void loadPicture(const std::string& file, Workpiece& piece)
{
    piece.file = file;
    piece.picture = readPictureFile(file);
    orInputError(file, [&] { takeFrame(frameOf(piece.picture, 16), 0, piece.work); });
}

void savePicture(const std::string& name, const CKestImage& image)
{
    const ConstGrayView view = image.view();
    save(name, {view.pixels, view.width, view.height, view.stride, 8});
}

void savePicture(const std::string& name, const Work& work)
{
    if (!work.inColor())
        return savePicture(name, work.gray());
    const ConstColorView view = work.color().view();
    save(name, {view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width, 24});
}

std::string outputName(const std::string& pattern, const std::string& file, bool severalPictures)
{
    const std::size_t at = pattern.find("{}");
    if (at == std::string::npos) {
        if (severalPictures)
            throw InputError(pattern +
                             ": several pictures need {} in the output's name, which stands for theirs");
        return pattern;
    }
    const std::u8string stem = nativePath(file.c_str()).stem().u8string();
    return pattern.substr(0, at) + std::string(stem.begin(), stem.end()) + pattern.substr(at + 2);
}

std::string checkThreshold(const std::string& text)
{
    return orRefusal(parseThreshold(text).has_value(), thresholdForm);
}

std::string checkLevel(const std::string& text)
{
    return orRefusal(parseLevel(text).has_value(), levelForm);
}

std::string checkRegion(const std::string& text)
{
    return orRefusal(parseRegion(text).has_value(), regionForm);
}

std::string checkObject(const std::string& text)
{
    return orRefusal(text == "white" || text == "black", "'white' or 'black'");
}

} // namespace ormalux::cli
