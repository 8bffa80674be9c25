/**
 * The inspection engine for any language and any compiler, in plain C99.
 *
 * A recipe is opened once and run on any number of frames, from any number of threads. No function throws,
 * keeps global state or prints. Texts and paths are UTF-8. Where `error` is given and something is wrong, it
 * receives a text, one line a fault, cut to error_size bytes with its 0 at the end; it may be NULL.
 */
#ifndef ORMALUX_INTERFACE_ORMALUX_H
#define ORMALUX_INTERFACE_ORMALUX_H

#include <stddef.h>

#if defined(_WIN32) && !defined(ORMALUX_STATIC_OBJECTS)
#if defined(ORMALUX_BUILDING)
#define ORMALUX_C_API __declspec(dllexport)
#else
#define ORMALUX_C_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define ORMALUX_C_API __attribute__((visibility("default")))
#else
#define ORMALUX_C_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ormalux_recipe ormalux_recipe;
typedef struct ormalux_result ormalux_result;

/** How a frame's pixels stand in memory; colours in the order of their bytes. */
enum
{
    ORMALUX_GRAY8 = 1,
    ORMALUX_BGR24 = 2,
    ORMALUX_RGB24 = 3,
    ORMALUX_BGRA32 = 4,
    ORMALUX_GRAY16 = 5 /**< native byte order; a level v becomes v >> (bits - 8), at most 255 */
};

/** "0.1.0"; never NULL, stands as long as the library is loaded. */
ORMALUX_C_API const char* ormalux_version(void);

/** Reads a recipe file; names in it are relative to it. NULL on failure. Close it with ormalux_recipe_close.
 */
ORMALUX_C_API ormalux_recipe* ormalux_recipe_open(const char* path, char* error, size_t error_size);

/** The same for a text; names in it are relative to folder, or to the working folder when that is NULL. */
ORMALUX_C_API ormalux_recipe* ormalux_recipe_parse(const char* json, const char* folder, char* error,
                                                   size_t error_size);

/**
 * Gives one of the recipe's named values another one, as JSON of the kind of its default. 1, or 0 with the
 * recipe as it was. Not while the recipe runs in another thread.
 */
ORMALUX_C_API int ormalux_recipe_set(ormalux_recipe* recipe, const char* name, const char* json_value,
                                     char* error, size_t error_size);

/** Results of the recipe stay readable. NULL is fine. */
ORMALUX_C_API void ormalux_recipe_close(ormalux_recipe* recipe);

/**
 * Inspects a frame. pixels is its top left pixel; row y stands at pixels + y * stride bytes, and stride may
 * be negative. bits are the significant bits of ORMALUX_GRAY16, 8 to 16; 0 leaves them to the recipe's
 * "bits", else all 16; other formats take 8. The pixels are read in place and never changed.
 *
 * Never NULL but when memory is short: wrong arguments give a result with verdict -1 and its error. Free it
 * with ormalux_result_free. Any number of threads may run one recipe at once; one result belongs to one
 * thread at a time.
 */
ORMALUX_C_API ormalux_result* ormalux_recipe_run(const ormalux_recipe* recipe, const void* pixels, int width,
                                                 int height, ptrdiff_t stride, int format, int bits);

/** 1 pass, 0 fail, -1 error; without limits 1 when something was found. */
ORMALUX_C_API int ormalux_result_verdict(const ormalux_result* result);

/** The line that `ormalux run` prints, without "file" and line end. It stands until the result is freed. */
ORMALUX_C_API const char* ormalux_result_json(const ormalux_result* result);

/**
 * Copies what the steps made of the picture: rows tight, top row first; 1 channel of gray or 3 of blue,
 * green, red. Before the call *width and *height are the size that pixels has room for, with 3 channels a
 * pixel when *channels is 3, else 1; afterwards they and *channels are those of the picture. 1, or 0 when
 * pixels is NULL or the room is too small: only the size is then written. 0 and a size of 0 when there is no
 * picture.
 *
 * A gray picture that no step has changed is not kept: it is read from the caller's memory again, which must
 * still be there.
 */
ORMALUX_C_API int ormalux_result_image(const ormalux_result* result, void* pixels, int* width, int* height,
                                       int* channels);

/** NULL is fine. */
ORMALUX_C_API void ormalux_result_free(ormalux_result* result);

#ifdef __cplusplus
}
#endif

#endif
