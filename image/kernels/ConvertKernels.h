#pragma once

#include <cstddef>
#include <cstdint>

/// Gray values of count pixels of blue, green, red bytes.
namespace ormalux::kernels {

void redOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
void greenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
void blueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
/// (blue + green + red) / 3.
void meanOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
/// (red + green) / 2, and so on.
void halfRedGreenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
void halfRedBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
void halfGreenBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);

} // namespace ormalux::kernels
