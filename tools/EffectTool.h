#pragma once

#include "tools/Tool.h"

#include <string>

namespace ormalux {

/// How an effect takes a colour picture.
enum class ColorUse
{
    None,     ///< not at all: it is shown on the gray form and not applied
    Unpadded, ///< by the colour image's own operation, on rows without padding
    Padded,   ///< the same on padded rows
    Channels  ///< by the gray operation on each channel
};

/// A tool that changes the picture.
class EffectTool : public Tool
{
public:
    virtual ColorUse colorUse() const = 0;
    /// Whether the area alone is changed; else always the whole picture is.
    virtual bool overArea() const { return true; }

    /// The operation on the picture's area.
    void run(CKestImage& picture, const RECT& area) const;
    /// The same for a colour picture with rows as colorRows() says.
    void run(CKestImage24& picture, const RECT& area) const;
    ColorRows colorRows() const
    {
        return colorUse() == ColorUse::Padded ? ColorRows::Padded : ColorRows::Unpadded;
    }

    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;

protected:
    /// The operation on an image that is the area alone.
    virtual void change(CKestImage& image) const = 0;
    /// The same for a colour image; only asked for where colorUse() names rows.
    virtual void change(CKestImage24&) const {}
    /// The lines of a program that make the call on `image`.
    virtual std::string call() const = 0;
    /// The call as a step of a recipe, its region left out.
    virtual QJsonObject step() const = 0;

private:
    ToolScene placed(ToolScene scene) const;
};

} // namespace ormalux
