#include "cli/HistogramPlot.h"

#include "cli/PictureModule.h"

namespace ormalux::cli {

void writeHistogramPlot(const std::string& name, const CKestImage& image)
{
    long counts[256] = {};
    image.Histogram(counts);
    writeByModule(name,
                  [&](const OrmaluxPictures& module) { return module.plotHistogram(name.c_str(), counts); });
}

} // namespace ormalux::cli
