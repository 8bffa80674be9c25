#include "tools/Program.h"

#include <algorithm>

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

} // namespace

CString programHead(const ToolScene& scene)
{
    std::string file = scene.pictureFile.empty() ? "a picture" : scene.pictureFile;
    std::replace_if(
        file.begin(), file.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return "// Build: c++ -std=c++17 program.cpp $(pkg-config --cflags --libs ormalux)\n// Made for " + file +
           " of " + std::to_string(scene.width) + " x " + std::to_string(scene.height) + " pixels\n";
}

CString completeProgram(const ToolScene& scene, std::string_view body)
{
    CString text = programHead(scene);
    text +=
        "#include \"image/VisionImage.h\"\n\n#include <algorithm>\n#include <cstdio>\n#include <fstream>\n"
        "#include <iterator>\n#include <vector>\n";
    text += grayReader;
    text += "\nint main(int argc, char** argv)\n{\n    CKestImage image;\n"
            "    if (argc < 2 || !readPicture(argv[1], image)) {\n"
            "        std::fprintf(stderr, \"usage: %s picture.bmp\\n\", argv[0]);\n"
            "        return 1;\n    }\n";
    text += body;
    return text + "    return 0;\n}\n";
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
