#include "tools/Program.h"

namespace ormalux {

namespace {

constexpr std::string_view grayReader = R"(
// Reads an uncompressed 8- or 24-bit BMP of any width: gray as it is, colour as (R + G + B) / 3.
static bool readPicture(const char* path, CKestImage& image)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), {}};
    if (bytes.size() < 54 || bytes[0] != 'B' || bytes[1] != 'M')
        return false;
    const auto number = [&bytes](int at) {
        return int(bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | unsigned(bytes[at + 3]) << 24);
    };
    const long long start = number(10), width = number(18), rows = number(22), bits = bytes[28];
    const long long height = rows < 0 ? -rows : rows, step = (width * bits + 31) / 32 * 4;
    if ((bits != 8 && bits != 24) || width < 1 || height < 1 || start < 54 ||
        start + step * height > (long long)bytes.size())
        return false;
    std::vector<unsigned char> pixels;
    for (long long y = 0; y < height; ++y) {
        const unsigned char* p = bytes.data() + start + step * (rows < 0 ? y : height - 1 - y);
        for (long long x = 0; x < width; ++x, p += bits / 8)
            pixels.push_back(bits == 8 ? p[0] : (unsigned char)((p[0] + p[1] + p[2]) / 3));
    }
    image.SetImagePtr(int(width), int(height), pixels.data());
    return !image.IsEmpty();
}
)";

CString opening(const ToolScene& scene, bool color)
{
    CString text = "// Build: c++ -std=c++20 program.cpp $(pkg-config --cflags --libs ormalux)\n";
    text += "// Made for " + (scene.pictureFile.empty() ? CString("a picture") : scene.pictureFile) + " of " +
            std::to_string(scene.width) + " x " + std::to_string(scene.height) + " pixels\n";
    if (color)
        return text + "#include \"color/VisionImage24.h\"\n\n#include <cstdio>\n";
    text +=
        "#include \"image/VisionImage.h\"\n\n#include <algorithm>\n#include <cstdio>\n#include <fstream>\n"
        "#include <iterator>\n#include <vector>\n";
    return text.append(grayReader);
}

CString mainOf(const ToolScene& scene, std::string_view body, const char* usage, int arguments, bool color,
               const char* closing)
{
    CString text = opening(scene, color);
    text += "\nint main(int argc, char** argv)\n{\n";
    text += color ? "    CKestImage24 image;\n" : "    CKestImage image;\n";
    text += "    if (argc < " + std::to_string(arguments) + " || !" +
            (color ? "image.LoadImage(argv[1])" : "readPicture(argv[1], image)") + ") {\n";
    text += CString("        std::fprintf(stderr, \"usage: %s ") + usage + "\\n\", argv[0]);\n";
    text += "        return 1;\n    }\n";
    text += body;
    text += closing;
    return text + "}\n";
}

} // namespace

CString completeProgram(const ToolScene& scene, std::string_view body)
{
    return mainOf(scene, body, "picture.bmp", 2, false, "    return 0;\n");
}

CString effectProgram(const ToolScene& scene, std::string_view body)
{
    return mainOf(scene, body, "picture.bmp result.bmp", 3, scene.color,
                  "    return image.SaveImage(argv[2]) ? 0 : 1;\n");
}

CString areaArguments(const RECT& area)
{
    return std::to_string(area.left) + ", " + std::to_string(area.top) + ", " + std::to_string(area.right) +
           ", " + std::to_string(area.bottom);
}

CString literal(const std::string& text)
{
    CString quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

} // namespace ormalux
