#pragma once

#include <cstdint>
#include <span>

namespace ormalux {

enum class SampleKind
{
    Unsigned,
    Signed,
    Real
};

/// What a picture file says of itself that the toolkit does not tell, or is lenient about.
struct FileHead
{
    int bits = 0; ///< of a sample; 0 for palettes and where the file does not say
    SampleKind kind = SampleKind::Unsigned;
    int pages = 0; ///< of a TIFF file, without the smaller copies that belong to a page; 0 for other kinds
    /// The file ends before its pixels do, as far as its kind (PNG, JPEG, TIFF, BMP) lets that be seen
    /// without decoding.
    bool truncated = false;
};

/// Reads the heads of PNG, TIFF, JPEG, BMP and PNM files; of others, or damaged ones, nothing is known.
FileHead readFileHead(std::span<const std::uint8_t> file);
/// A TIFF file, plain or with offsets of 64 bits; bits, kind and length are those of its first page.
FileHead tiffHead(std::span<const std::uint8_t> file);

/// A number of up to 8 bytes; 0 beyond the file's end.
std::uint64_t number(std::span<const std::uint8_t> file, std::uint64_t at, int bytes,
                     bool littleEndian = true);

} // namespace ormalux
