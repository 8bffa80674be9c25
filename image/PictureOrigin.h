#pragma once

#include <string>
#include <vector>

namespace ormalux {

/// Why a file gave no picture.
enum class PictureFault
{
    None,
    NotFound,
    Directory,
    NotAFile, ///< a pipe or device
    NoPermission,
    NotReadable,
    Empty,
    NotAPicture,
    Truncated,
    Damaged,
    NotSupported, ///< floating-point or signed samples, or of a depth that is not decoded
    TooLarge,
    NoMemory
};

/// Why a file gave no picture, for programs and in words.
struct PictureRefusal
{
    PictureFault fault = PictureFault::None;
    std::string text;

    bool none() const { return fault == PictureFault::None; }
};

/// What a picture was in its file, as far as 8 bits a sample of one page do not hold it.
struct PictureOrigin
{
    PictureFault fault = PictureFault::None; ///< else nothing below was found out
    int bits = 8;                            ///< of a sample in the file
    int usedBits = 8;                        ///< of more than 8: those that its largest sample needs
    int pages = 1;                           ///< pictures in the file; the first was read
    bool transparent = false;                ///< it has pixels that are not opaque; their colours were kept

    bool depthCut() const { return bits > 8; }
};

/// What a picture lost when it was read, in English, one sentence without a full stop each.
std::vector<std::string> whatWasCut(const PictureOrigin& origin);

} // namespace ormalux
