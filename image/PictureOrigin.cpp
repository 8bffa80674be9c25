#include "image/PictureOrigin.h"

namespace ormalux {

std::vector<std::string> whatWasCut(const PictureOrigin& origin)
{
    std::vector<std::string> losses;
    if (origin.depthCut()) {
        const std::string bits = std::to_string(origin.bits);
        losses.push_back(bits + " bits a sample are cut to 8");
        if (origin.usedBits < origin.bits)
            losses.back() += "; its levels need only " + std::to_string(origin.usedBits) + " of " + bits +
                             " bits, so that it is dark";
    }
    if (origin.pages > 1)
        losses.push_back("only the first of " + std::to_string(origin.pages) + " pages is read");
    if (origin.transparent)
        losses.push_back("its transparency is dropped");
    return losses;
}

} // namespace ormalux
