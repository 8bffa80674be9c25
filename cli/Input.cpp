#include "cli/Input.h"

#include "cli/Output.h"
#include "cli/QuietLibraries.h"
#include "cli/Step.h"
#include "platform/Path.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"

#include <algorithm>

namespace ormalux::cli {

namespace {

std::string sizeText(int width, int height)
{
    return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

/// The colour image's planes take rows without padding, its buffer counts padded ones: the rows stand
/// unpadded at its beginning.
void fillColor(CKestImage24& color, Picture& picture)
{
    const std::size_t stride = (std::size_t(picture.width) * 3 + 3) / 4 * 4;
    picture.pixels.resize(std::max(picture.pixels.size(), stride * std::size_t(picture.height)));
    color.SetImagePtr(picture.width, picture.height, picture.pixels.data());
}

} // namespace

PictureOrigin loadPicture(const std::string& file, Workpiece& work)
{
    std::string error;
    Picture picture;
    {
        const QuietLibraries quiet;
        picture = ormalux::readPicture(file.c_str(), &error);
    }
    if (picture.empty())
        throw InputError(error);
    work.file = file;
    if (picture.isGray()) {
        work.image.SetImagePtr(picture.width, picture.height, picture.pixels.data());
    } else {
        work.image.SetImagePtr(picture.width, picture.height, 24, picture.pixels.data(), "RGB");
        work.original = toQImage(picture.source());
        fillColor(work.color, picture);
    }
    if (work.image.IsEmpty() || (!picture.isGray() && work.color.IsEmpty()))
        throw InputError(file + ": too little memory for " + sizeText(picture.width, picture.height));
    for (const std::string& loss : whatWasCut(picture.origin))
        complain("warning: '" + file + "': " + loss);
    return picture.origin;
}

int levelOf(const ThresholdChoice& choice, const CKestImage& image, const RECT& region,
            const std::string& file, int step)
{
    if (!choice.automatic)
        return choice.low;
    const long level =
        image.GetAutoThreshold(region.left, region.top, region.right, region.bottom, 'A', step);
    if (level == 0)
        throw InputError(file + ": no rising edges to set a threshold by; give one with --threshold");
    return int(level);
}

namespace {

void save(const std::string& name, const PixelSource& picture)
{
    std::string error;
    if (!writePicture(name.c_str(), picture, &error))
        throw InputError(error);
}

} // namespace

void savePicture(const std::string& name, const CKestImage& image)
{
    const ConstGrayView view = image.view();
    save(name, {view.pixels, view.width, view.height, view.stride, 8});
}

void savePicture(const std::string& name, const Workpiece& work)
{
    if (!work.inColor)
        return savePicture(name, work.image);
    const ConstColorView view = work.color.view();
    save(name, {view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width, 24});
}

RECT regionWithin(const CKestImage& image, const std::string& file, const RECT& region)
{
    if (region.left < 0 || region.top < 0 || region.right >= image.GetWidth() ||
        region.bottom >= image.GetHeight())
        throw InputError(file + ": the region " + std::to_string(region.left) + "," +
                         std::to_string(region.top) + "," + std::to_string(region.right) + "," +
                         std::to_string(region.bottom) + " leaves the picture of " +
                         sizeText(image.GetWidth(), image.GetHeight()));
    return region;
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

} // namespace ormalux::cli
