#include "tools/Program.h"

#include <string>

namespace ormalux {

namespace {

constexpr std::string_view pictures = R"(
// Bytes of gray, or of blue, green and red; the top row comes first.
struct Picture
{
    int width = 0, height = 0;
    std::vector<unsigned char> pixels;

    Picture(int w, int h) : width(w), height(h), pixels(std::size_t(@BYTES@ * w + 3) / 4 * 4 * h) {}
    unsigned char* row(int y) { return pixels.data() + std::size_t(@STEP@) * y; }
};

// Reads an uncompressed BMP of any width@READS@; one of no pixels stands for a failure.
static Picture readPicture(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), {}};
    if (bytes.size() < 54 || bytes[0] != 'B' || bytes[1] != 'M')
        return {0, 0};
    const auto number = [&bytes](int at) {
        return int(bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | unsigned(bytes[at + 3]) << 24);
    };
    const long long start = number(10), width = number(18), rows = number(22), bits = bytes[28];
    const long long height = rows < 0 ? -rows : rows, step = (width * bits + 31) / 32 * 4;
    if (@DEPTHS@ || width < 1 || height < 1 || start < 54 || start + step * height > (long long)bytes.size())
        return {0, 0};
    Picture picture{int(width), int(height)};
    for (int y = 0; y < picture.height; ++y) {
        const unsigned char* p = bytes.data() + start + step * (rows < 0 ? y : height - 1 - y);
@COPY@    }
    return picture;
}

static bool writePicture(const char* path, Picture& picture)
{
    const unsigned rowBytes = @BYTES@u * unsigned(picture.width), padding = (4 - rowBytes % 4) % 4;
    const unsigned start = @START@, size = start + (rowBytes + padding) * unsigned(picture.height);
    const unsigned header[] = {size, 0, start, 40, unsigned(picture.width), unsigned(picture.height),
                               1 | @BITS@ << 16, 0, 0, 0, 0, 0, 0};
    std::ofstream file(path, std::ios::binary);
    file << "BM";
    for (const unsigned value : header)
        for (int shift = 0; shift < 32; shift += 8)
            file.put(char(value >> shift));
@PALETTE@    for (int y = picture.height - 1; y >= 0; --y)
        file.write(reinterpret_cast<const char*>(picture.row(y)), rowBytes).write("\0\0\0", padding);
    return bool(file.flush());
}
)";

constexpr std::string_view areaCopies = R"(
// The rows of a rectangle of the picture, copied to or from a picture of their own.
static void copyArea(Picture& picture, int left, int top, Picture& part, bool back)
{
    for (int y = 0; y < part.height; ++y) {
        unsigned char* const inPicture = picture.row(top + y) + @BYTES@ * left;
        std::memcpy(back ? inPicture : part.row(y), back ? part.row(y) : inPicture, std::size_t(@BYTES@) * part.width);
    }
}
)";

constexpr std::string_view channelsOpening =
    R"(    std::vector<unsigned char> channel(std::size_t(part.width) * part.height);
    for (int color = 0; color < 3; ++color) {
        for (std::size_t i = 0; i < channel.size(); ++i)
            channel[i] = part.pixels[3 * i + color];
        CKestImage image;
        image.SetImagePtrLink(part.width, part.height, channel.data());
)";

constexpr std::string_view channelsClosing = R"(        for (std::size_t i = 0; i < channel.size(); ++i)
            part.pixels[3 * i + color] = channel[i];
    }
)";

constexpr std::string_view grayCopy = R"(        for (int x = 0; x < picture.width; ++x, p += bits / 8)
            picture.row(y)[x] = bits == 8 ? p[0] : (unsigned char)((p[0] + p[1] + p[2]) / 3);
)";

constexpr std::string_view grayPalette = R"(    for (int level = 0; level < 256; ++level)
        file.put(char(level)).put(char(level)).put(char(level)).put(0);
)";

std::string number(LONG value)
{
    return std::to_string(value);
}

void replaceAll(std::string& text, std::string_view mark, std::string_view by)
{
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + by.size()))
        text.replace(at, mark.size(), by);
}

std::string helpers(bool color, bool padded, bool area)
{
    std::string text(pictures);
    if (area)
        text += areaCopies;
    replaceAll(text, "@BYTES@", color ? "3" : "1");
    replaceAll(text, "@STEP@", !color ? "width" : padded ? "(3 * width + 3) / 4 * 4" : "3 * width");
    replaceAll(text, "@READS@", color ? " with 24 bits" : ": 8 bits as they are, 24 bits as (R + G + B) / 3");
    replaceAll(text, "@DEPTHS@", color ? "bits != 24" : "(bits != 8 && bits != 24)");
    replaceAll(text, "@COPY@",
               color ? "        std::memcpy(picture.row(y), p, 3 * std::size_t(width));\n" : grayCopy);
    replaceAll(text, "@START@", color ? "54" : "54 + 1024");
    replaceAll(text, "@BITS@", color ? "24" : "8");
    replaceAll(text, "@PALETTE@", color ? "" : grayPalette);
    return text;
}

std::string cutting(const CRect& area)
{
    return "    // The area alone, as a picture of its own\n"
           "    const int left = " +
           number(area.left) + ", top = " + number(area.top) + ";\n    Picture part(" +
           number(area.right - area.left + 1) + ", " + number(area.bottom - area.top + 1) +
           ");\n    if (left + part.width > picture.width || top + part.height > picture.height) {\n"
           "        std::fprintf(stderr, \"%s: the area leaves the picture\\n\", argv[1]);\n"
           "        return 1;\n    }\n"
           "    copyArea(picture, left, top, part, false);\n";
}

/// Every line further in by one level.
std::string indented(std::string_view lines)
{
    std::string text;
    bool begins = true;
    for (const char c : lines) {
        if (begins && c != '\n')
            text += "    ";
        begins = c == '\n';
        text += c;
    }
    return text;
}

} // namespace

CString effectProgram(const ToolScene& scene, ColorUse use, std::string_view call)
{
    const bool color = scene.color && use != ColorUse::None;
    const bool channels = color && use == ColorUse::Channels;
    const bool area = !scene.wholePicture();
    std::string text = programHead(scene);
    text +=
        color && !channels ? "#include \"color/VisionImage24.h\"\n" : "#include \"image/VisionImage.h\"\n";
    text += "\n#include <cstdio>\n#include <cstring>\n#include <fstream>\n#include <iterator>\n#include "
            "<vector>\n";
    text += helpers(color, use == ColorUse::Padded, area);
    text += "\nint main(int argc, char** argv)\n{\n"
            "    Picture picture = argc < 3 ? Picture(0, 0) : readPicture(argv[1]);\n"
            "    if (picture.width == 0) {\n"
            "        std::fprintf(stderr, \"usage: %s picture.bmp result.bmp\\n\", argv[0]);\n"
            "        return 1;\n    }\n";
    text += area ? cutting(scene.area) : "    Picture& part = picture;\n";
    if (channels) {
        text += channelsOpening;
        text += indented(call);
        text += channelsClosing;
    } else {
        text += color ? "    CKestImage24 image;\n" : "    CKestImage image;\n";
        text += "    image.SetImagePtrLink(part.width, part.height, part.pixels.data());\n";
        text += call;
    }
    if (area)
        text += "    copyArea(picture, left, top, part, true);\n";
    return text + "    return writePicture(argv[2], picture) ? 0 : 1;\n}\n";
}

} // namespace ormalux
