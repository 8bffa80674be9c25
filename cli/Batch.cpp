#include "cli/Batch.h"

#include "cli/Input.h"
#include "cli/Progress.h"

#include <cstdio>
#include <new>

namespace ormalux::cli {

void Batch::addTo(CLI::App& command, bool withAnnotation)
{
    command.add_option("pictures", files, "Pictures: BMP, PNG, JPEG, TIFF")->required();
    auto* asJson = command.add_flag("--json", json, "One JSON object a line and picture");
    command.add_flag("--csv", csv, "Comma separated values, one header line")->excludes(asJson);
    if (withAnnotation)
        command.add_option(
            "--annotate", annotate,
            "Write the picture with what was found drawn in; {} stands for the picture's name");
}

int Batch::run(const std::function<Findings(const std::string& file)>& work) const
{
    Report report(json ? Format::Json : csv ? Format::Csv : Format::Table, several());
    Progress progress(files.size());
    bool failed = false, found = false;
    for (std::size_t i = 0; i < files.size(); ++i) {
        try {
            const Findings findings = work(files[i]);
            progress.clear();
            report.write(findings);
            found = found || findings.recordName.empty() || !findings.records.empty();
        } catch (const InputError& error) {
            progress.clear();
            std::fprintf(stderr, "ormalux: %s\n", error.what());
            failed = true;
        } catch (const std::bad_alloc&) {
            progress.clear();
            std::fprintf(stderr, "ormalux: %s: too little memory\n", files[i].c_str());
            failed = true;
        }
        progress.advance(i + 1 < files.size() ? files[i + 1] : std::string());
    }
    return failed ? BadInput : found ? Done : NothingFound;
}

} // namespace ormalux::cli
