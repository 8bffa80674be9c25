#include "interface/ormalux.h"

#include <stdio.h>
#include <string.h>

/* A station in C99: what it prints is compared. The frame of every format holds one bright part of 10 x 8. */
enum
{
    width = 64,
    height = 48
};
static const char text[] =
    "{\"values\":{\"level\":100},\"steps\":[{\"step\":\"blobs\",\"threshold\":\"$level\"}]}";

/* The level of the pixel that stands at x in row y from the top. */
static int level(int x, int y)
{
    return x >= 10 && x < 20 && y >= 30 && y < 38 ? 200 : 20;
}

static void tell(const char* what, const ormalux_recipe* recipe, const void* pixels, int wide, int high,
                 ptrdiff_t stride, int format, int bits)
{
    ormalux_result* const result = ormalux_recipe_run(recipe, pixels, wide, high, stride, format, bits);
    printf("%s: %d %s\n", what, ormalux_result_verdict(result), ormalux_result_json(result));
    ormalux_result_free(result);
}

int main(void)
{
    static unsigned char gray[height][width], flipped[height][width], color[height][width + 5][3],
        room[width * height];
    static unsigned short deep[height][width];
    char error[200], cut[12];
    int x, y, wide = 0, high = 0, channels = 0;
    ormalux_recipe* recipe;
    ormalux_result* result;

    for (y = 0; y < height; ++y)
        for (x = 0; x < width; ++x) {
            gray[y][x] = flipped[height - 1 - y][x] = (unsigned char)level(x, y);
            deep[y][x] = (unsigned short)(level(x, y) << 4); /* 12 bits */
            memset(color[y][x], level(x, y), 3);
        }
    recipe = ormalux_recipe_parse(text, NULL, error, sizeof error);
    if (!recipe || *error)
        return puts(error), 1;
    tell("gray", recipe, gray, width, height, width, ORMALUX_GRAY8, 8);
    tell("bottom up", recipe, flipped[height - 1], width, height, -width, ORMALUX_GRAY8, 8);
    tell("colour", recipe, color, width, height, 3 * (width + 5), ORMALUX_BGR24, 8);
    tell("12 bits", recipe, deep, width, height, 2 * width, ORMALUX_GRAY16, 12);

    result = ormalux_recipe_run(recipe, color, width, height, 3 * (width + 5), ORMALUX_BGR24, 8);
    printf("size only: %d", ormalux_result_image(result, NULL, &wide, &high, &channels));
    printf(" %d %d %d\n", wide, high, channels);
    printf("image: %d", ormalux_result_image(result, room, &wide, &high, &channels));
    printf(" %d %d\n", room[30 * width + 10], room[29 * width + 10]);
    wide = high = 0x7fffffff; /* all the room in the world, in colour */
    channels = 3;
    printf("image: %d\n", ormalux_result_image(result, room, &wide, &high, &channels));
    ormalux_result_free(result);

    printf("set: %d\n", ormalux_recipe_set(recipe, "level", "200", error, sizeof error));
    tell("nothing above", recipe, gray, width, height, width, ORMALUX_GRAY8, 8);
    printf("set: %d", ormalux_recipe_set(recipe, "leval", "1", cut, sizeof cut));
    printf(" %u %d\n", (unsigned)strlen(cut), ormalux_recipe_set(recipe, NULL, NULL, NULL, 0));

    tell("no pixels", recipe, NULL, width, height, width, ORMALUX_GRAY8, 8);
    tell("no format", recipe, gray, width, height, width, 9, 8);
    tell("short rows", recipe, gray, width, height, width - 1, ORMALUX_GRAY8, 8);
    tell("17 bits", recipe, deep, width, height, 2 * width, ORMALUX_GRAY16, 17);
    tell("no size", recipe, gray, 0, -1, width, ORMALUX_GRAY8, 8);
    tell("no recipe", NULL, gray, width, height, width, ORMALUX_GRAY8, 8);
    printf("nothing: %d %d %d\n", ormalux_result_verdict(NULL),
           ormalux_result_image(NULL, room, &wide, &high, &channels),
           ormalux_recipe_open(NULL, NULL, 0) != NULL);
    if (ormalux_recipe_parse("{\"steps\":[{\"step\":\"blops\"}]}", NULL, error, sizeof error))
        return 1;
    puts(error);
    ormalux_result_free(NULL);
    ormalux_recipe_close(NULL);
    ormalux_recipe_close(recipe);
    return 0;
}
