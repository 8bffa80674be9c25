#include "array/MatchSourceFile.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Output.h"
#include "cli/OutputNames.h"
#include "platform/File.h"
#include "platform/SafeText.h"
#include "steps/ArgumentText.h"

#include <algorithm>
#include <memory>

namespace ormalux::cli {

namespace {

struct CutOptions
{
    std::string picture;
    std::string region;
    std::string threshold = "auto";
    std::string object;
    std::string character;
    std::string output;
};

struct ShowOptions
{
    std::vector<std::string> files;
    std::string picture;
    bool json = false;
};

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return text;
}

bool endsWith(const std::string& text, const char* ending)
{
    const std::size_t length = std::string(ending).size();
    return text.size() >= length && lowered(text.substr(text.size() - length)) == ending;
}

/// A pattern's key is its polarity, a character source's the character.
int keyOf(const CutOptions& options)
{
    if (endsWith(options.output, ".mcs") && options.character.empty())
        return options.object == "white" ? 255 : 0;
    if (endsWith(options.output, ".ocs") && options.object.empty() && options.character.size() == 1)
        return static_cast<unsigned char>(options.character[0]);
    throw InputError(options.output +
                     ": a pattern is written as .mcs with --object, a character as .ocs with --key "
                     "and one character");
}

int cut(const CutOptions& options)
{
    const int key = keyOf(options);
    checkOutputNames({options.picture}, {options.output});
    Workpiece piece;
    loadPicture(options.picture, piece);
    Work& work = piece.work;
    const RECT region =
        orInputError(options.picture, [&] { return *work.region(parseRegion(options.region)); });
    const int threshold =
        orInputError(options.picture, [&] { return work.level(*parseLevel(options.threshold), region); });
    CKestImage& image = work.grayToChange();
    image.SetROIPlacement(region);
    image.Threshold(threshold);

    std::vector<std::uint8_t> pixels(image.view().pixels, image.view().pixels + image.GetImageLen());
    _stMatchSource source{};
    source.key = static_cast<unsigned char>(key);
    source.threshold = threshold;
    source.black_count = LONG(image.GetGrayLevelCount(0));
    source.white_count = LONG(image.GetGrayLevelCount(255));
    source.width = image.GetWidth();
    source.height = image.GetHeight();
    source.data = pixels.data();
    std::error_code why;
    if (!writeMatchSource(options.output.c_str(), source, &why))
        throw InputError(options.output + ": cannot be written: " + writeFailure(why));
    putLine(shown(options.output) + ": " + std::to_string(source.width) + " x " +
            std::to_string(source.height) + ", threshold " + std::to_string(threshold) + ", " +
            std::to_string(source.black_count) + " black, " + std::to_string(source.white_count) + " white");
    return Done;
}

std::string keyText(int key)
{
    if (key > 32 && key < 127)
        return std::string(1, char(key));
    return std::to_string(key);
}

/// The template as people see it, as far as a terminal has room; what is left out is said.
void draw(const _stMatchSource& source)
{
    constexpr int widest = 160, highest = 200;
    if (source.width == 0 || source.height == 0)
        return putLine("no pixels");
    if (source.width > widest)
        return putLine("too wide to be drawn here; --picture writes it");
    for (int y = 0; y < std::min(int(source.height), highest); ++y) {
        std::string line;
        for (int x = 0; x < source.width; ++x)
            line += source.data[std::ptrdiff_t(y) * source.width + x] ? '#' : '.';
        putLine(line);
    }
    if (source.height > highest)
        putLine(std::to_string(source.height - highest) + " more rows; --picture writes them");
}

void showOne(const std::string& file, const ShowOptions& options, Report& report)
{
    CMatchSrcArray sources;
    sources.Add(file.c_str());
    if (sources.GetCount() == 0)
        throw InputError(file + ": not a match source, shorter than it declares, or not to be read");
    const _stMatchSource& source = sources[0];
    FactSheet facts;
    facts.add("key", keyText(source.key));
    facts.add("width", source.width);
    facts.add("height", source.height);
    facts.add("threshold", std::int64_t(source.threshold));
    facts.add("black", source.black_count);
    facts.add("white", source.white_count);
    report.write(file, facts.findings());
    if (!options.json)
        draw(source);
    if (!options.picture.empty()) {
        if (source.width == 0 || source.height == 0)
            throw InputError(file + ": the source has no pixels to write");
        savePicture(outputName(options.picture, file, options.files.size() > 1),
                    CKestImage(source.width, source.height, source.data));
    }
}

int show(const ShowOptions& options)
{
    checkOutputNames(options.files, {options.picture});
    Report report(options.json ? Format::Json : Format::Table, options.files.size() > 1);
    bool failed = false;
    for (const std::string& file : options.files)
        try {
            showOne(file, options, report);
        } catch (const InputError& error) {
            complain(error.what());
            failed = true;
        }
    return failed ? BadInput : Done;
}

} // namespace

void addSource(Command& program)
{
    Command command = program.add("source", "Cut templates out of pictures, and show them");
    command.needsCommand();

    Command cutting = command.add("cut", "Write a region of a picture as .mcs (pattern) or .ocs (character)");
    auto options = std::make_shared<CutOptions>();
    cutting.text({"picture", "The picture to cut from", true}, options->picture);
    cutting.text({"--roi", "The region x1,y1,x2,y2", true, {}, {}, checkRegion}, options->region);
    cutting.text({"-t,--threshold", "auto or a level 0..255", false, "auto", {}, checkLevel},
                 options->threshold);
    cutting.text(
        {"--object", "A pattern's object: white or black (black when not given)", false, {}, {}, checkObject},
        options->object);
    cutting.text({"--key", "The character that an .ocs source stands for"}, options->character);
    cutting.text({"-o,--output", "The file to write, .mcs or .ocs", true}, options->output);
    cutting.runs([options] { return cut(*options); });

    Command showing = command.add("show", "Print what source files hold");
    auto shown = std::make_shared<ShowOptions>();
    showing.texts({"files", "Source files", true}, shown->files);
    showing.text({"--picture", "Write the template as a picture; {} stands for the file's name"},
                 shown->picture);
    showing.flag({"--json", "One JSON object a line and file, without the pixels"}, shown->json);
    showing.runs([shown] { return show(*shown); });
}

} // namespace ormalux::cli
