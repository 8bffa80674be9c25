// Recipes as texts: read, checked, and run on a small picture where they are right.
#include "image/VisionImage.h"
#include "steps/Recipe.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

CKestImage drawn()
{
    CKestImage image(64, 48);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            image.SetPixel(x, y,
                           static_cast<unsigned char>((x / 16 + y / 12) % 2 ? 200 + x % 7 : 30 + y % 5));
    return image;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CKestImage image = drawn();
    static CKestInspection result;
    const std::string text(reinterpret_cast<const char*>(data), size);
    CKestRecipe recipe;
    if (!recipe.Parse(text.c_str(), "/nonexistent"))
        return std::strlen(recipe.GetError()) == 0 ? __builtin_trap(), 0 : 0;
    recipe.Set("level", "90");
    recipe.Run(image, result);
    if (std::strlen(result.GetJson()) < 2)
        __builtin_trap();
    return 0;
}
