#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

using HBITMAP = const QImage&;
using HINSTANCE = void*;

/// Helpers that hosts and the library share. All static and safe to call from any thread unless said
/// otherwise. The drawing, clipboard and bitmap functions belong to the display module and need it to be
/// linked.
class CStdlib
{
public:
    /// The processors that this process may run on (its affinity), at least 1.
    ORMALUX_API static int GetNumOfProcessors();
    /// The folder of a module, without a trailing separator. Null means the processing module itself; else
    /// any address inside the module on systems without module handles. Empty when the module is not known.
    ORMALUX_API static CString GetInstancePath(HINSTANCE instance);
    /// Euclidean distance, truncated: the squares are summed in double, the sum and its root rounded to
    /// float.
    ORMALUX_API static long Distance(int x1, int y1, int x2, int y2);
    ORMALUX_API static void Swap(int* a, int* b);
    ORMALUX_API static void Swap(long* a, long* b);
};
