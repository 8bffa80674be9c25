#include "match/CharacterReader.h"

#include "image/WorkPool.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace ormalux {

namespace {

/// How far a joined character may differ from a template's size, besides the shift.
constexpr int sizeSlack = 1;

void take(BestKeys& best, int key, double share)
{
    if (key == best.key) {
        best.share = std::max(best.share, share);
    } else if (best.key < 0 || share > best.share) {
        best = {key, best.key, share, best.share};
    } else if (best.second < 0 || share > best.secondShare) {
        best.second = key;
        best.secondShare = share;
    }
}

/// What a template of the key must surpass to change the result.
double leastFor(const BestKeys& best, int key)
{
    if (key == best.key)
        return best.share;
    return best.second < 0 ? -1.0 : best.secondShare;
}

} // namespace

CharacterReader::CharacterReader(const ConstGrayView& image, const InkLevels& levels, int shift,
                                 std::span<const InkTemplate> templates)
    : m_image(image), m_levels(levels), m_shift(shift), m_templates(templates)
{
    for (const InkTemplate& each : templates) {
        m_widest = std::max(m_widest, each.width + sizeSlack + m_shift);
        m_highest = std::max(m_highest, each.height + sizeSlack + m_shift);
        m_leastInk = m_leastInk == 0 ? each.ink : std::min(m_leastInk, each.ink);
    }
}

bool CharacterReader::read(const CharacterBox& box, BestKeys& best)
{
    best = {};
    if (!m_ink.take(m_image, box, m_levels, m_shift))
        return false;
    for (const InkTemplate& each : m_templates)
        if (const auto share = m_ink.share(each, leastFor(best, each.key)))
            take(best, each.key, *share);
    return true;
}

bool CharacterReader::readAll(std::span<const CharacterBox> boxes, std::span<BestKeys> best) const
{
    std::atomic<bool> complete{true};
    const std::int64_t tries = (2 * m_shift + 1) * (2 * m_shift + 1);
    const std::int64_t boxNanoseconds = 500 + 15 * tries * std::int64_t(m_templates.size());
    runBands(Job::OcrMatch, std::int64_t(boxes.size()), {std::int64_t(boxes.size()) * boxNanoseconds},
             [&](const Band& band) {
                 CharacterReader reader(m_image, m_levels, m_shift, m_templates);
                 for (std::int64_t i = band.first; i < band.end && complete; ++i)
                     if (!reader.read(boxes[std::size_t(i)], best[std::size_t(i)]))
                         complete = false;
             });
    return complete;
}

bool CharacterReader::hasSize(const CharacterBox& box) const
{
    const int slack = sizeSlack + m_shift;
    return std::any_of(m_templates.begin(), m_templates.end(), [&](const InkTemplate& each) {
        return std::abs(each.width - box.width()) <= slack && std::abs(each.height - box.height()) <= slack;
    });
}

} // namespace ormalux
