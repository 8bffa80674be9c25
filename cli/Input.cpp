#include "cli/Input.h"

#include "cli/Values.h"
#include "platform/Path.h"
#include "view/PictureReader.h"

namespace ormalux::cli {

GrayPicture readGray(const std::string& file)
{
    PictureResult result = readPicture(file);
    if (!result.error.empty())
        throw InputError(result.error);
    GrayPicture picture;
    picture.file = file;
    picture.color = result.picture.channels == 3;
    Picture& read = result.picture;
    if (picture.color)
        picture.image.SetImagePtr(read.width, read.height, 24, read.pixels.data(), "RGB");
    else
        picture.image.SetImagePtr(read.width, read.height, read.pixels.data());
    if (picture.image.IsEmpty())
        throw InputError(file + ": too little memory for " + std::to_string(read.width) + " x " +
                         std::to_string(read.height) + " pixels");
    return picture;
}

RECT regionWithin(const CKestImage& image, const std::string& file, const std::string& regionText)
{
    const RECT whole{0, 0, image.GetWidth() - 1, image.GetHeight() - 1};
    if (regionText.empty())
        return whole;
    const RECT region = parseRegion(regionText);
    if (region.left < 0 || region.top < 0 || region.right > whole.right || region.bottom > whole.bottom)
        throw InputError(file + ": the region " + regionText + " leaves the picture of " +
                         std::to_string(image.GetWidth()) + " x " + std::to_string(image.GetHeight()) +
                         " pixels");
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
