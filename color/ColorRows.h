#pragma once

namespace ormalux {

/// How an operation on a colour image steps from row to row.
enum class ColorRows
{
    Unpadded,
    Padded
};

} // namespace ormalux
