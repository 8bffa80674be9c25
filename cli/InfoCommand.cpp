#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"

#include <memory>

namespace ormalux::cli {

namespace {

const Findings& describe(const std::string& file, FactSheet& facts)
{
    Workpiece piece;
    loadPicture(file, piece);
    const CKestImage& gray = piece.work.gray();
    long histogram[256] = {};
    gray.Histogram(histogram);
    int darkest = 0, brightest = 255;
    while (histogram[darkest] == 0)
        ++darkest;
    while (histogram[brightest] == 0)
        --brightest;
    facts.clear();
    facts.add("width", gray.GetWidth());
    facts.add("height", gray.GetHeight());
    facts.add("kind", piece.picture.isGray() ? "gray" : "colour");
    facts.add("bits", piece.picture.origin.bits);
    facts.add("pages", piece.picture.origin.pages);
    facts.add("darkest", darkest);
    facts.add("brightest", brightest);
    facts.add("mean", double(gray.GetGrayLevelAverage()));
    facts.add("auto_threshold", std::int64_t(gray.GetAutoThreshold('A', 1)));
    return facts.findings();
}

} // namespace

void addInfo(Command& program)
{
    Command command = program.add("info", "Size, kind and gray levels of pictures");
    auto batch = std::make_shared<Batch>();
    batch->addTo(command, false);
    command.runs([batch] {
        FactSheet facts;
        return batch->run([&](const std::string& file) -> const Findings& { return describe(file, facts); });
    });
}

} // namespace ormalux::cli
