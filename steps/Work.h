#pragma once

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "steps/Findings.h"
#include "steps/Motion.h"
#include "steps/Parameter.h"

#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace ormalux {

/// A step cannot be run on this picture; the message says why, without the picture's name.
struct PictureError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The picture as the steps so far have left it, and what they found.
class Work
{
public:
    /// Borrows gray rows; they are copied as soon as a step changes them, at once when they are not tight.
    void takeGray(const ConstGrayView& picture);
    /// Copies tight rows of blue, green, red; the buffer has room for padded ones.
    void takeColor(const ConstColorView& picture);

    /// What gray steps work on; of a colour picture (R + G + B) / 3 until a plane is taken.
    const CKestImage& gray() const { return m_own ? m_gray : m_borrowed; }
    /// The same to be changed; behind it the picture is gray.
    CKestImage& grayToChange();
    /// Changes the step's region of the gray picture, as a picture of its own. Throws std::bad_alloc.
    void changeGray(const std::optional<RECT>& given, const std::function<void(CKestImage&)>& edit);
    /// Takes the place of the gray picture.
    void setGray(CKestImage&& picture);
    /// Empty for a gray picture; else as colour steps left it, whatever gray steps have done since.
    const CKestImage24& color() const { return m_color; }
    CKestImage24& colorToChange() { return m_color; }
    /// What a step in colour has changed is what everything behind it sees.
    void colorChanged();
    void dropColor();
    /// The colour picture is what the steps have made; the gray one is its mean.
    bool inColor() const { return m_inColor; }

    int width() const { return gray().GetWidth(); }
    int height() const { return gray().GetHeight(); }

    /// The region that a step works on: the one given, or the whole picture. In a frame it moves along and is
    /// cut to the picture: nothing when nothing is left. Throws PictureError when one outside a frame leaves
    /// the picture.
    std::optional<RECT> region(const std::optional<RECT>& given) const;
    /// The level that a choice stands for in the region. Throws PictureError when the region has no rising
    /// edges to set a threshold by.
    int level(const ThresholdChoice& choice, const RECT& region, int step = 1) const;

    /// Where a point of the recipe lies in this picture.
    Motion::Point placed(double x, double y) const { return frame ? frame->map(x, y) : Motion::Point{x, y}; }
    /// Degrees that directions of the recipe are turned by.
    double turned() const { return frame ? frame->degrees() : 0; }
    /// The row that a reference names; null when it was not found.
    const Place* find(const RowReference& reference) const;

    /// What a frame step has made of the picture: where things have gone, or why that is not known.
    std::optional<Motion> motion;
    std::string missing;

    std::vector<std::uint8_t> scratch; ///< a frame's pixels in the form that the steps take

    const Motion* frame = nullptr;      ///< of the step that runs
    const RECT* limit = nullptr;        ///< takes the place of the step's region: of a resampled picture
    std::span<const Findings> findings; ///< of the steps, by their numbers

private:
    CKestImage m_borrowed; ///< linked to the caller's rows
    CKestImage m_gray;
    CKestImage24 m_color;
    bool m_own = false;
    bool m_inColor = false;
};

/// The whole of a picture, corners included.
RECT wholeOf(const CKestImage& image);
/// "640 x 480 pixels"
std::string sizeText(int width, int height);

} // namespace ormalux
