#pragma once

#include "tools/ToolHost.h"

class CKestView;

namespace ormalux {

class ViewImage;

/// A view as the tools see it.
class ViewToolHost : public ToolHost
{
    Q_OBJECT

public:
    explicit ViewToolHost(CKestView& view);

    CSize size() const override;
    bool isColor() const override;
    std::shared_ptr<const CKestImage> grayPicture() override;
    std::shared_ptr<const CKestImage24> colorPicture() override;
    std::string pictureFile() const override;
    CRect area() const override;

    bool preview(const void* owner, const GrayOperation& gray, const ColorOperation& color,
                 ColorRows rows) override;
    void endPreview(const void* owner) override;
    bool apply(const GrayOperation& gray, const ColorOperation& color, ColorRows rows) override;

    void clearLayer(const char* layer) override;
    void addLine(const char* layer, POINT from, POINT to, Stroke stroke) override;
    void addRectangle(const char* layer, const RECT& rect, Stroke stroke) override;
    void addCross(const char* layer, POINT center, int arm, Stroke stroke) override;
    void addLabel(const char* layer, const RECT& rect, LabelPlace place, const std::string& text,
                  COLORREF color) override;
    void repaint() override;
    void reveal(const RECT& rect) override;
    void pickLine() override;
    void cancelPick() override;
    double zoom() const override;

private:
    void pictureTouched();
    bool tryOn(ViewImage& copy, const GrayOperation& gray, const ColorOperation& color, ColorRows rows) const;

    CKestView& m_view;
    std::shared_ptr<const CKestImage> m_gray; ///< of the picture as it is; null until asked for
    const void* m_previewOwner = nullptr;
    bool m_pickingLine = false;
    bool m_telling = false;
};

} // namespace ormalux
