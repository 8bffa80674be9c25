#include "cli/PictureModule.h"

#include "cli/Input.h"
#include "cli/Output.h"
#include "cli/SharedModule.h"
#include "platform/Path.h"
#include "platform/Process.h"

#include <filesystem>
#include <new>

namespace ormalux::cli {

#if defined(ORMALUX_PICTURES)

namespace {

namespace fs = std::filesystem;

/// Beside the program, as in a build or on Windows, or in the folder that it is installed to.
fs::path moduleFile()
{
    static const int here = 0;
    const std::string folder = moduleFolder(&here);
    if (folder.empty())
        return {};
    for (const char* const place : {".", ORMALUX_PICTURES_PLACE}) {
        const fs::path file = nativePath(folder.c_str()) / place / ORMALUX_PICTURES;
        std::error_code error;
        if (fs::exists(file, error))
            return file;
    }
    return {};
}

const OrmaluxPictures* load(std::string& why)
{
    const fs::path file = moduleFile();
    if (file.empty()) {
        why = "is missing";
        return nullptr;
    }
    void* const module = openModule(file, why);
    if (!module) {
        why = "cannot be loaded: " + why;
        return nullptr;
    }
    auto* const function =
        reinterpret_cast<OrmaluxPicturesFunction*>(moduleFunction(module, ORMALUX_PICTURES_FUNCTION));
    const OrmaluxPictures* const table = function ? function() : nullptr;
    if (!table || std::string(table->version) != ORMALUX_VERSION) {
        why = "belongs to another version";
        return nullptr;
    }
    table->start([](const char* message) { complain(message); });
    return table;
}

} // namespace

const OrmaluxPictures* pictureModule(std::string& why)
{
    static std::string fault;
    static const OrmaluxPictures* const table = load(fault);
    if (!table)
        why = "without " ORMALUX_PICTURES ", which " + fault +
              ", pictures are BMP only, uncompressed with 8, 24 or 32 bits";
    return table;
}

const char* buildNote()
{
    return "";
}

#else

const OrmaluxPictures* pictureModule(std::string& why)
{
    why = "this build reads and writes BMP only, uncompressed with 8, 24 or 32 bits, and draws nothing";
    return nullptr;
}

const char* buildNote()
{
    return " (BMP only)";
}

#endif

void writeByModule(const std::string& name,
                   const std::function<const char*(const OrmaluxPictures& module)>& write)
{
    std::string why;
    const OrmaluxPictures* const module = pictureModule(why);
    if (!module)
        throw InputError("cannot write '" + name + "': " + why);
    const char* const error = write(*module);
    if (error == module->noMemory)
        throw std::bad_alloc();
    if (error)
        throw InputError(error);
}

OrmaluxPixels toPixels(const PixelSource& picture)
{
    return {picture.bits, picture.width, picture.height, picture.stride, picture.bitCount};
}

} // namespace ormalux::cli
