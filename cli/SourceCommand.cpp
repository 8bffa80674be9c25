#include "array/MatchSourceFile.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Output.h"
#include "cli/OutputNames.h"
#include "cli/SafeText.h"
#include "cli/Step.h"
#include "cli/Values.h"
#include "platform/File.h"

#include <CLI/CLI.hpp>

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

bool endsWith(const std::string& text, const char* ending)
{
    const std::size_t length = std::string(ending).size();
    return text.size() >= length && CLI::detail::to_lower(text.substr(text.size() - length)) == ending;
}

/// A pattern's key is its polarity, a character source's the character.
int keyOf(const CutOptions& options)
{
    if (endsWith(options.output, ".mcs") && options.character.empty())
        return parseObject(options.object.empty() ? "black" : options.object);
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
    Workpiece picture;
    loadPicture(options.picture, picture);
    const RECT region = regionWithin(picture.image, options.picture, parseRegion(options.region));
    const int threshold =
        levelOf(parsePlainThreshold(options.threshold), picture.image, region, options.picture);
    picture.image.SetROIPlacement(region);
    picture.image.Threshold(threshold);

    std::vector<std::uint8_t> pixels(picture.image.view().pixels,
                                     picture.image.view().pixels + picture.image.GetImageLen());
    _stMatchSource source{};
    source.key = static_cast<unsigned char>(key);
    source.threshold = threshold;
    source.black_count = LONG(picture.image.GetGrayLevelCount(0));
    source.white_count = LONG(picture.image.GetGrayLevelCount(255));
    source.width = picture.image.GetWidth();
    source.height = picture.image.GetHeight();
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
    Findings findings{file, {}, {}, {}};
    findings.facts = {{"key", keyText(source.key)},  {"width", source.width},
                      {"height", source.height},     {"threshold", source.threshold},
                      {"black", source.black_count}, {"white", source.white_count}};
    report.write(findings);
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

void addSource(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("source", "Cut templates out of pictures, and show them");
    command->require_subcommand(1);

    CLI::App* cutting =
        command->add_subcommand("cut", "Write a region of a picture as .mcs (pattern) or .ocs (character)");
    auto options = std::make_shared<CutOptions>();
    cutting->add_option("picture", options->picture, "The picture to cut from")->required();
    cutting->add_option("--roi", options->region, "The region x1,y1,x2,y2")
        ->required()
        ->each([](const std::string& text) { parseRegion(text); });
    cutting->add_option("-t,--threshold", options->threshold, "auto or a level 0..255")
        ->capture_default_str()
        ->each([](const std::string& text) { parsePlainThreshold(text); });
    cutting
        ->add_option("--object", options->object, "A pattern's object: white or black (black when not given)")
        ->each([](const std::string& text) { parseObject(text); });
    cutting->add_option("--key", options->character, "The character that an .ocs source stands for");
    cutting->add_option("-o,--output", options->output, "The file to write, .mcs or .ocs")->required();
    cutting->callback([&chosen, options] { chosen = [options] { return cut(*options); }; });

    CLI::App* showing = command->add_subcommand("show", "Print what source files hold");
    auto shown = std::make_shared<ShowOptions>();
    showing->add_option("files", shown->files, "Source files")->required();
    showing->add_option("--picture", shown->picture,
                        "Write the template as a picture; {} stands for the file's name");
    showing->add_flag("--json", shown->json, "One JSON object a line and file, without the pixels");
    showing->callback([&chosen, shown] { chosen = [shown] { return show(*shown); }; });
}

} // namespace ormalux::cli
