#include "cli/Input.h"

#include "cli/Output.h"
#include "cli/PictureModule.h"
#include "cli/QuietLibraries.h"
#include "image/PictureFile.h"
#include "platform/Path.h"
#include "steps/ArgumentText.h"

#include <algorithm>
#include <new>

namespace ormalux::cli {

namespace {

void save(const std::string& name, const PixelSource& picture)
{
    std::string error;
    if (fileEnding(name.c_str()) != "bmp" && !picture.empty()) {
        const OrmaluxPixels pixels = toPixels(picture);
        writeByModule(name,
                      [&](const OrmaluxPictures& module) { return module.write(name.c_str(), &pixels); });
    } else if (!writeBmp(name.c_str(), picture, &error)) {
        throw InputError(error);
    }
}

LoadedPicture decodeByModule(const std::vector<std::uint8_t>& file, std::string& why)
{
    const OrmaluxPictures* const module = pictureModule(why);
    if (!module)
        return {};
    OrmaluxDecoded decoded{};
    const QuietLibraries quiet;
    if (const char* const fault = module->decode(file.data(), file.size(), &decoded)) {
        why = fault;
        return {};
    }
    const OrmaluxPixels& pixels = decoded.pixels;
    return {{pixels.bits, pixels.width, pixels.height, pixels.stride, pixels.bitCount},
            {PictureFault::None, decoded.bits, decoded.usedBits, decoded.pages, decoded.transparent != 0},
            {static_cast<const void*>(decoded.owner),
             [module](const void* owner) { module->release(const_cast<void*>(owner)); }},
            decoded.deep};
}

PictureRefusal whyNoPicture(std::span<const std::uint8_t> beginning)
{
    PictureRefusal why;
    const OrmaluxPictures* const module = pictureModule(why.text);
    if (module) {
        const QuietLibraries quiet;
        const char* const fault = module->whyNoPicture(beginning.data(), beginning.size());
        why.text = fault ? fault : "";
    }
    why.fault = why.text.empty() ? PictureFault::None : PictureFault::NotAPicture;
    return why;
}

/// Empty with the reason when that fails.
LoadedPicture load(const std::string& file, std::string& why)
try {
    PictureFile opened = openPicture(file.c_str(), false, whyNoPicture);
    why = std::move(opened.why.text);
    if (!opened.bytes.empty())
        return decodeByModule(opened.bytes, why);
    const auto picture = std::make_shared<const Picture>(std::move(opened.picture));
    return {picture->source(), picture->origin, picture,
            picture->deep.empty() ? nullptr : picture->deep.data()};
} catch (const std::bad_alloc&) {
    why = "memory is short";
    return {};
}

std::string orRefusal(bool right, const char* form)
{
    return right ? std::string() : std::string("expected ") + form;
}

} // namespace

LoadedPicture readPictureFile(const std::string& file, bool takesDepth)
{
    std::string why;
    LoadedPicture picture = load(file, why);
    if (picture.pixels.empty())
        throw InputError(readingError(file.c_str(), why));
    PictureOrigin origin = picture.origin;
    if (takesDepth && picture.deep)
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

FrameSource frameOf(const LoadedPicture& picture, int bits)
{
    const PixelSource& pixels = picture.pixels;
    if (picture.deep)
        return {picture.deep,        pixels.width, pixels.height, std::ptrdiff_t(2) * pixels.width,
                PixelFormat::Gray16, bits,         bits > 0};
    return {pixels.bits,
            pixels.width,
            pixels.height,
            pixels.stride,
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

PixelSource pixelsOf(const CKestImage& image)
{
    const ConstGrayView view = image.view();
    return {view.pixels, view.width, view.height, view.stride, 8};
}

PixelSource pixelsOf(const CKestImage24& image)
{
    const ConstColorView view = image.view();
    return {view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width, 24};
}

void loadModuleFor(const std::vector<std::string>& files)
{
    std::string why;
    if (!std::ranges::all_of(files,
                             [](const std::string& file) { return fileEnding(file.c_str()) == "bmp"; }))
        pictureModule(why);
}

void savePicture(const std::string& name, const CKestImage& image)
{
    save(name, pixelsOf(image));
}

void savePicture(const std::string& name, const Work& work)
{
    save(name, work.inColor() ? pixelsOf(work.color()) : pixelsOf(work.gray()));
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
