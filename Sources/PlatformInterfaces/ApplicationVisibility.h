#pragma once

namespace tavro {

/// Hides applications from the screen and shows them again. One adapter per platform. Main thread only.
class ApplicationVisibility {
public:
    ApplicationVisibility() = default;
    ApplicationVisibility(const ApplicationVisibility&) = delete;
    ApplicationVisibility& operator=(const ApplicationVisibility&) = delete;
    virtual ~ApplicationVisibility() = default;

    /// Whether this session can do any of it. May change while the program runs.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// Takes the windows of this application off the screen.
    virtual void hide() = 0;

    /// Takes those of all other applications off the screen; what belongs to the desktop stays.
    virtual void hideOthers() = 0;

    /// Brings back what `hideOthers` has hidden and what is still there of it. This application stays in
    /// front.
    virtual void showAll() = 0;
};

} // namespace tavro
