#include "view/FileHead.h"

#include <algorithm>
#include <set>

namespace ormalux {

namespace {

enum Tag
{
    SubfileType = 254,
    BitsPerSample = 258,
    Photometric = 262,
    StripOffsets = 273,
    StripByteCounts = 279,
    TileOffsets = 324,
    TileByteCounts = 325,
    SampleFormat = 339
};

/// The values of one field of a page.
struct Field
{
    std::uint64_t count = 0;
    std::uint64_t at = 0;
    int valueSize = 2;
};

class Tiff
{
public:
    explicit Tiff(std::span<const std::uint8_t> file)
        : m_file(file), m_little(file[0] == 'I'), m_big(read(2, 2) == 43), m_offsetSize(m_big ? 8 : 4)
    {}

    /// Whether the page's fields are all there.
    bool hasPage(std::uint64_t page) const
    {
        const std::uint64_t count = entries(page);
        return count > 0 && entryAt(page, count) + std::uint64_t(m_offsetSize) <= m_file.size();
    }
    std::uint64_t firstPage() const { return read(m_big ? 8 : 4, m_offsetSize); }
    std::uint64_t pageBehind(std::uint64_t page) const
    {
        return read(entryAt(page, entries(page)), m_offsetSize);
    }

    /// A field without values when the page lacks it.
    Field field(std::uint64_t page, Tag tag) const
    {
        for (std::uint64_t i = 0, count = entries(page); i < count; ++i) {
            const std::uint64_t entry = entryAt(page, i);
            if (read(entry, 2) != std::uint64_t(tag))
                continue;
            const std::uint64_t type = read(entry + 2, 2);
            Field found;
            found.valueSize = type == 16 ? 8 : type == 4 ? 4 : type == 1 ? 1 : 2;
            found.count = read(entry + 4, m_offsetSize);
            found.at = entry + 4 + std::uint64_t(m_offsetSize);
            if (found.count > std::uint64_t(m_offsetSize / found.valueSize))
                found.at = read(found.at, m_offsetSize);
            return found;
        }
        return {};
    }

    /// 0 where the field has no such value.
    std::uint64_t value(const Field& field, std::uint64_t index = 0) const
    {
        return index >= field.count
                   ? 0
                   : read(field.at + index * std::uint64_t(field.valueSize), field.valueSize);
    }

    /// Whether a strip or tile of the page lies beyond the file's end.
    bool isCut(std::uint64_t page, Tag offsets, Tag byteCounts) const
    {
        const Field starts = field(page, offsets), lengths = field(page, byteCounts);
        const std::uint64_t parts = std::min({starts.count, lengths.count, std::uint64_t(m_file.size())});
        for (std::uint64_t i = 0; i < parts; ++i) {
            const std::uint64_t start = value(starts, i);
            if (start > m_file.size() || value(lengths, i) > m_file.size() - start)
                return true;
        }
        return false;
    }

private:
    std::uint64_t read(std::uint64_t at, int bytes) const { return number(m_file, at, bytes, m_little); }
    std::uint64_t entries(std::uint64_t page) const
    {
        return std::min<std::uint64_t>(read(page, m_big ? 8 : 2), 4096);
    }
    std::uint64_t entryAt(std::uint64_t page, std::uint64_t index) const
    {
        return page + (m_big ? 8 : 2) + index * (m_big ? 20 : 12);
    }

    std::span<const std::uint8_t> m_file;
    bool m_little;
    bool m_big;
    int m_offsetSize;
};

int pagesOf(const Tiff& tiff)
{
    constexpr std::size_t most = 65536; // as many as a page number can tell apart
    std::set<std::uint64_t> seen;       // a damaged chain may lead back
    int pages = 0;
    for (std::uint64_t page = tiff.firstPage(); page != 0 && seen.size() < most;
         page = tiff.pageBehind(page)) {
        if (!seen.insert(page).second)
            break;
        const bool smallerCopy = tiff.value(tiff.field(page, SubfileType)) & 1u;
        pages += pages == 0 || !smallerCopy;
    }
    return pages;
}

} // namespace

FileHead tiffHead(std::span<const std::uint8_t> file)
{
    const Tiff tiff(file);
    const std::uint64_t page = tiff.firstPage();
    FileHead head;
    head.pages = pagesOf(tiff);
    const Field bits = tiff.field(page, BitsPerSample);
    if (tiff.value(tiff.field(page, Photometric)) != 3) // a palette
        head.bits = bits.count > 0 ? int(tiff.value(bits)) : 1;
    const std::uint64_t kind = tiff.value(tiff.field(page, SampleFormat));
    head.kind = kind == 2 || kind == 5   ? SampleKind::Signed
                : kind == 3 || kind == 6 ? SampleKind::Real
                                         : SampleKind::Unsigned;
    head.truncated = !tiff.hasPage(page) || tiff.isCut(page, StripOffsets, StripByteCounts) ||
                     tiff.isCut(page, TileOffsets, TileByteCounts);
    return head;
}

} // namespace ormalux
