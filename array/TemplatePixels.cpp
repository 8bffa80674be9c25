#include "array/TemplatePixels.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace ormalux {

namespace {

/// Stands before the pixels in one allocation.
struct Kept
{
    Kept* older;
};

/// Every buffer handed out; freed with the module.
class KeptList
{
public:
    ~KeptList()
    {
        for (Kept* kept = m_newest.load(); kept;) {
            Kept* older = kept->older;
            std::free(kept);
            kept = older;
        }
    }
    void push(Kept* kept)
    {
        kept->older = m_newest.load();
        while (!m_newest.compare_exchange_weak(kept->older, kept)) {
        }
    }

private:
    std::atomic<Kept*> m_newest{nullptr};
};

KeptList keptPixels;

} // namespace

std::uint8_t* keepTemplatePixels(std::span<const std::uint8_t> pixels)
{
    void* memory = std::malloc(sizeof(Kept) + pixels.size());
    if (!memory)
        return nullptr;
    keptPixels.push(new (memory) Kept{nullptr});
    auto* bytes = static_cast<std::uint8_t*>(memory) + sizeof(Kept);
    std::copy(pixels.begin(), pixels.end(), bytes);
    return bytes;
}

} // namespace ormalux
