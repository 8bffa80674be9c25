#pragma once

#include "tools/ToolDialog.h"

#include <memory>

class CKestImage;
class QPushButton;

namespace ormalux {

class SourceList;
class ThresholdGroup;

/// A dialog of a tool that looks for match sources in the area, off the window's thread.
class SearchDlg : public ToolDialog
{
    Q_OBJECT

protected:
    using Show = std::function<void()>;   ///< shows what was found, on the window's thread
    using Search = std::function<Show()>; ///< see LatestJob

    using ToolDialog::ToolDialog;

    /// Connects the shared controls; to be called once, after attach().
    void attachSearch(ThresholdGroup* level, SourceList* sources, QPushButton* run, ToolButtonRow* buttons);
    /// Searches anew. Without a source nothing is searched, and what is listed and drawn stays.
    void refresh() final;

    /// The level that the tool last read takes for the picture.
    virtual int levelOf(const CKestImage& picture, const CRect& area) const = 0;
    /// The search by the tool last read; there are sources.
    virtual Search search(std::shared_ptr<const CKestImage> picture, const CRect& area) = 0;
    /// Empties the list and removes the drawings.
    virtual void clearFound() = 0;

private:
    void forget();

    ThresholdGroup* m_level = nullptr;
    SourceList* m_sources = nullptr;
};

} // namespace ormalux
