#include "tools/EffectDlg.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"

namespace ormalux {

namespace {

/// The tool's operations for a host; colour is null where the tool has none.
struct Operations
{
    ToolHost::GrayOperation gray;
    ToolHost::ColorOperation color;

    Operations(const EffectTool& tool, const CRect& area)
        : gray([&tool, area](CKestImage& image) { tool.run(image, area); })
    {
        if (tool.colorUse() != ColorUse::None)
            color = [&tool, area](CKestImage24& image) { tool.run(image, area); };
    }
};

} // namespace

void EffectDlg::refresh()
{
    const EffectTool& tool = effect();
    if (host().size().cx == 0)
        return setMessage(tr("영상이 없습니다."));
    setMessage(tool.colorUse() == ColorUse::None ? grayFormNote() : QString());
    const Operations operations(tool, host().area());
    host().preview(this, operations.gray, operations.color, tool.colorRows());
}

bool EffectDlg::apply()
{
    const EffectTool& tool = effect();
    const Operations operations(tool, host().area());
    const bool run = host().apply(operations.gray, operations.color, tool.colorRows());
    if (!run)
        setMessage(host().size().cx == 0 ? tr("영상이 없습니다.")
                                         : tr("이 기능은 8비트 회색조 영상에만 적용할 수 있습니다."));
    return run;
}

} // namespace ormalux
