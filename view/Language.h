#pragma once

#include "platform/Export.h"

/// The language of the image window's and its tools' texts, for the whole process.
class ORMALUXVIEW_API CKestLanguage
{
public:
    /// "ko" gives the texts as they are written, mostly Korean; "en" their English translation. Open windows
    /// change at once. False, and nothing changes, for any other language, without an application, or when
    /// the translation was not built in. To be called from the application's own thread.
    static bool Set(const char* language);
    /// "ko" or "en".
    static const char* Get();
};
