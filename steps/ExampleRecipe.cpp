#include "steps/RecipeSchema.h"

namespace ormalux {

std::string exampleRecipe()
{
    return R"(// A recipe: the steps run in turn on every picture. 'ormalux recipe schema' prints what every step takes.
// Run it with: ormalux run recipe.json pictures/ --annotate 'marked/{}.png'
{
    "name": "bright parts",
    "steps": [
        // Steps that change the picture; those behind see what is left.
        {"step": "gassian3x3"},
        {"step": "light", "brightness": 10, "contrast": 20},

        // Steps that measure; every one adds its findings to the picture's line of output.
        // A region is x1,y1,x2,y2: "roi": [0, 0, 319, 239]
        {"step": "blobs", "threshold": "auto", "object": "white", "min_size": "8x8", "sort": "pixels"},
        {"step": "histogram"}

        // Names of sources are looked for beside the recipe:
        // {"step": "match", "source": "lid.mcs", "threshold": "90..200", "min_yield": 0.8}
        // {"step": "ocr", "source": ["digits/"], "min_size": "4x8", "max_size": "40x60"}
        // {"step": "gauge-line", "box": [10, 10, 200, 120], "direction": "horizontal", "threshold": 128}
    ]
}
)";
}

} // namespace ormalux
