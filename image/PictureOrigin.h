#pragma once

#include <string>
#include <vector>

namespace ormalux {

/// What a picture was in its file, as far as 8 bits a sample of one page do not hold it.
struct PictureOrigin
{
    int bits = 8;             ///< of a sample in the file
    int usedBits = 8;         ///< of more than 8: those that its largest sample needs
    int pages = 1;            ///< pictures in the file; the first was read
    bool transparent = false; ///< it has pixels that are not opaque; their colours were kept

    bool depthCut() const { return bits > 8; }
};

/// What a picture lost when it was read, in English, one sentence without a full stop each.
std::vector<std::string> whatWasCut(const PictureOrigin& origin);

} // namespace ormalux
