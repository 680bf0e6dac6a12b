#include "Platform/Linux/X11/WindowAspectAdapter.h"

#include "Platform/Linux/X11/Property.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace tavro::x11 {

namespace {

// The places of the numbers in WM_NORMAL_HINTS, and the bit of the first that says that a ratio is given.
constexpr std::size_t hintCount = 18;
constexpr std::size_t flags = 0;
constexpr std::size_t smallestRatio = 11;
constexpr std::size_t largestRatio = 13;
constexpr std::size_t smallestWidth = 5;
constexpr std::size_t smallestHeight = 6;
constexpr std::uint32_t hasSmallestSize = 1U << 4;
constexpr std::uint32_t hasRatio = 1U << 7;

/// The least number of pixels that is not below `length` times `numerator` by `denominator`.
std::uint32_t scaledUp(std::uint32_t length, std::uint32_t numerator, std::uint32_t denominator) {
    return (length * numerator + denominator - 1) / denominator;
}

void raiseSmallestSize(std::vector<std::uint32_t>& hints, WindowAspectAdapter::Ratio ratio) {
    auto& width = hints[smallestWidth];
    auto& height = hints[smallestHeight];
    if (width * ratio.height < height * ratio.width) {
        width = scaledUp(height, ratio.width, ratio.height);
    } else {
        height = scaledUp(width, ratio.height, ratio.width);
    }
}

} // namespace

WindowAspectAdapter::WindowAspectAdapter()
    : connection_(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection()) {
    qGuiApp->installNativeEventFilter(this);
}

void WindowAspectAdapter::setContentAspectRatio(QWindow& window, QSize ratio, QSize size) {
    const auto id = static_cast<xcb_window_t>(window.winId());
    ranges_[id] = rangeOf(ratio, size);
    apply(id, ranges_[id]);
}

WindowAspectAdapter::Range WindowAspectAdapter::rangeOf(QSize ratio, QSize size) {
    const Ratio wanted{static_cast<std::uint32_t>(ratio.width()), static_cast<std::uint32_t>(ratio.height())};
    // Less than a pixel of height is rounding.
    if (size.width() * ratio.height() - size.height() * ratio.width() <= ratio.width()) {
        return {.highest = wanted, .widest = wanted};
    }
    return {.highest = wanted,
            .widest = {static_cast<std::uint32_t>(size.width()), static_cast<std::uint32_t>(size.height())}};
}

bool WindowAspectAdapter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto type = static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = *static_cast<const xcb_property_notify_event_t*>(message);
        const auto known = ranges_.find(change.window);
        if (change.atom == XCB_ATOM_WM_NORMAL_HINTS && known != ranges_.end()) {
            apply(known->first, known->second);
        }
    } else if (type == XCB_DESTROY_NOTIFY) {
        // Another window may get the number.
        ranges_.erase(static_cast<const xcb_destroy_notify_event_t*>(message)->window);
    }
    return false;
}

void WindowAspectAdapter::apply(xcb_window_t window, const Range& range) {
    const auto hints =
        Property::numbers(connection_, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS);
    const auto wanted = withRange(hints, range);
    // Our own change is reported as well; without this it would never end.
    if (hints != wanted) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                            XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(wanted.size()),
                            wanted.data());
        xcb_flush(connection_);
    }
}

std::vector<std::uint32_t> WindowAspectAdapter::withRange(std::vector<std::uint32_t> hints,
                                                          const Range& range) {
    // Very old programs write fewer.
    hints.resize(std::max(hints.size(), hintCount));
    auto wanted = hints;
    wanted[flags] |= hasRatio;
    wanted[smallestRatio] = range.highest.width;
    wanted[smallestRatio + 1] = range.highest.height;
    wanted[largestRatio] = range.widest.width;
    wanted[largestRatio + 1] = range.widest.height;
    // What was raised for this shape once would be raised by its rounding again.
    if (wanted != hints && (wanted[flags] & hasSmallestSize) != 0) {
        raiseSmallestSize(wanted, range.highest);
    }
    return wanted;
}

} // namespace tavro::x11
