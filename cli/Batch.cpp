#include "cli/Batch.h"

#include "cli/Input.h"
#include "cli/Output.h"
#include "cli/OutputNames.h"
#include "cli/Progress.h"
#include "platform/Path.h"

#include <algorithm>
#include <new>

namespace ormalux::cli {

namespace {

bool isPictureName(const std::filesystem::path& path)
{
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    const char* const known[] = {".bmp", ".png", ".jpg", ".jpeg", ".tif", ".tiff"};
    return std::find(std::begin(known), std::end(known), ending) != std::end(known);
}

} // namespace

void Batch::addTo(Command& command, bool withAnnotation)
{
    command.texts({"pictures", "Pictures (BMP, PNG, JPEG, TIFF) or folders of them", true}, files);
    command.flag({"--json", "One JSON object a line and picture"}, json);
    command.flag({"--csv", "Comma separated values, one header line"}, csv);
    command.exclusive("--json", "--csv");
    if (withAnnotation)
        command.text({"--annotate",
                      "Write the picture with what was found drawn in; {} stands for the picture's name"},
                     annotate);
}

void Batch::expandFolders()
{
    namespace fs = std::filesystem;
    std::vector<std::string> expanded;
    for (const std::string& file : files) {
        std::error_code error;
        if (!fs::is_directory(nativePath(file.c_str()), error)) {
            expanded.push_back(file);
            continue;
        }
        std::vector<std::string> inside;
        fs::directory_iterator entry(nativePath(file.c_str()), error);
        // What has a picture's name but is none (a pipe, a link that leads nowhere) is told by the reader.
        for (std::error_code kind; !error && entry != fs::directory_iterator(); entry.increment(error))
            if (isPictureName(entry->path()) && !entry->is_directory(kind)) {
                const std::u8string path = entry->path().u8string();
                inside.emplace_back(path.begin(), path.end());
            }
        if (error)
            throw InputError(file + ": the folder cannot be read");
        if (inside.empty())
            throw InputError(file + ": the folder holds no pictures");
        std::sort(inside.begin(), inside.end());
        expanded.insert(expanded.end(), inside.begin(), inside.end());
    }
    files = std::move(expanded);
}

int Batch::run(const std::function<const Findings&(const std::string& file)>& work,
               std::vector<std::string> outputs, const std::vector<std::string>& otherInputs)
{
    expandFolders();
    outputs.push_back(annotate);
    checkOutputNames(files, outputs, otherInputs);
    Report report(json ? Format::Json : csv ? Format::Csv : Format::Table, several());
    Progress progress(files.size());
    bool failed = false, found = false;
    for (std::size_t i = 0; i < files.size(); ++i) {
        try {
            const Findings& findings = work(files[i]);
            progress.clear();
            report.write(files[i], findings);
            found = found || findings.layout().list.empty() || findings.rows() > 0;
        } catch (const InputError& error) {
            progress.clear();
            complain(error.what());
            failed = true;
        } catch (const std::bad_alloc&) {
            progress.clear();
            complain(files[i] + ": too little memory");
            failed = true;
        }
        progress.advance(i + 1 < files.size() ? files[i + 1] : std::string());
    }
    return failed ? BadInput : found ? Done : NothingFound;
}

} // namespace ormalux::cli
