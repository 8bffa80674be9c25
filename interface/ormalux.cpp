#include "interface/ormalux.h"

#include "steps/Recipe.h"
#include "steps/Runner.h"

#include <algorithm>
#include <cstring>
#include <new>

using namespace ormalux;

struct ormalux_recipe
{
    CKestRecipe recipe;
};

struct ormalux_result
{
    CKestInspection inspection;
};

namespace {

void tell(const char* text, char* error, size_t error_size)
{
    if (!error || error_size == 0)
        return;
    std::size_t length = std::min(std::strlen(text), error_size - 1);
    // A character of several bytes is left out whole.
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    std::memcpy(error, text, length);
    error[length] = 0;
}

template <class Read>
ormalux_recipe* opened(const Read& read, char* error, size_t error_size)
{
    tell("", error, error_size);
    auto* const made = new (std::nothrow) ormalux_recipe;
    if (made && read(made->recipe))
        return made;
    tell(made ? made->recipe.GetError() : "too little memory", error, error_size);
    delete made;
    return nullptr;
}

} // namespace

const char* ormalux_version(void)
{
    return ORMALUX_VERSION;
}

ormalux_recipe* ormalux_recipe_open(const char* path, char* error, size_t error_size)
{
    return opened([&](CKestRecipe& recipe) { return recipe.Load(path); }, error, error_size);
}

ormalux_recipe* ormalux_recipe_parse(const char* json, const char* folder, char* error, size_t error_size)
{
    return opened([&](CKestRecipe& recipe) { return recipe.Parse(json, folder); }, error, error_size);
}

int ormalux_recipe_set(ormalux_recipe* recipe, const char* name, const char* json_value, char* error,
                       size_t error_size)
{
    tell("", error, error_size);
    if (recipe && recipe->recipe.Set(name, json_value))
        return 1;
    tell(recipe ? recipe->recipe.GetError() : "there is no recipe", error, error_size);
    return 0;
}

void ormalux_recipe_close(ormalux_recipe* recipe)
{
    delete recipe;
}

ormalux_result* ormalux_recipe_run(const ormalux_recipe* recipe, const void* pixels, int width, int height,
                                   ptrdiff_t stride, int format, int bits)
{
    auto* const result = new (std::nothrow) ormalux_result;
    if (!result || !result->inspection.reserve()) {
        delete result;
        return nullptr;
    }
    static const CKestRecipe none;
    (recipe ? recipe->recipe : none)
        .Run(FrameSource{pixels, width, height, stride, PixelFormat(format), bits}, result->inspection);
    return result;
}

int ormalux_result_verdict(const ormalux_result* result)
{
    return result ? result->inspection.GetVerdict() : -1;
}

const char* ormalux_result_json(const ormalux_result* result)
{
    return result ? result->inspection.GetJson() : "{\"error\":\"there is no result\"}";
}

int ormalux_result_image(const ormalux_result* result, void* pixels, int* width, int* height, int* channels)
{
    if (!width || !height || !channels)
        return 0;
    constexpr int most = 1 << 30; // a longer side holds no more pictures
    const std::int64_t room =
        std::int64_t(std::clamp(*width, 0, most)) * std::clamp(*height, 0, most) * (*channels == 3 ? 3 : 1);
    *width = *height = *channels = 0;
    if (!result || !result->inspection.data().ran())
        return 0;
    const Work& work = result->inspection.data().work;
    const ConstGrayView gray = work.gray().view();
    if (gray.empty())
        return 0;
    *width = gray.width;
    *height = gray.height;
    *channels = work.inColor() ? 3 : 1;
    const std::int64_t bytes = std::int64_t(gray.width) * gray.height * *channels;
    if (!pixels || room < bytes)
        return 0;
    std::memcpy(pixels, work.inColor() ? work.color().view().pixels : gray.pixels, std::size_t(bytes));
    return 1;
}

void ormalux_result_free(ormalux_result* result)
{
    delete result;
}
