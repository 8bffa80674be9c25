#pragma once

#include "Held.h"

/// Pixels that images and arrays share.
namespace ormalux::python {

/// An array of the object, without a copy where it is one or has a buffer. Throws TypeError for others.
py::array asArray(const py::object& given);
/// Hands the pixels that an image owns to its keeper, so that others may hold on to them; the image borrows
/// them from then on. Returns the keeper before, which is to be let go of when nothing is locked.
template <class Image>
[[nodiscard]] std::shared_ptr<void> share(HeldImage<Image>& self)
{
    const auto view = self.image->view();
    if (view.empty() || view.pixels == self.kept)
        return nullptr;
    const auto linked = std::make_shared<Image>();
    linked->SetImagePtrLink(view.width, view.height, view.pixels);
    std::shared_ptr<void> before = std::move(self.keeper);
    self.keeper = self.image;
    self.kept = view.pixels;
    self.image = linked;
    return before;
}

/// Pixels that may be looked at unlocked.
template <class Image>
struct Shown
{
    decltype(std::declval<Image&>().view()) view;
    std::shared_ptr<void> keeper;
    const char* frozen = nullptr;
};

/// No Python object is made or let go of under the lock: that may run other threads, which wait for it.
template <class Image>
Shown<Image> sharedPixels(HeldImage<Image>& self)
{
    std::shared_ptr<void> before;
    const std::lock_guard guard(self.lock);
    before = share(self);
    return {self.image->view(), self.keeper, self.frozen};
}

/// Runs what gives an image other pixels; an array that it showed is let go of with the interpreter's lock.
template <class Image, class Body>
auto replaced(HeldImage<Image>& self, Body body)
{
    std::shared_ptr<void> old;
    return operate(std::array<Use, 1>{changes(self)}, [&] {
        const auto result = body(*self.image);
        if (!self.kept || self.image->view().pixels != self.kept) {
            old = std::move(self.keeper);
            self.keeper = nullptr;
            self.kept = nullptr;
            self.frozen = nullptr;
        }
        return result;
    });
}

} // namespace ormalux::python
