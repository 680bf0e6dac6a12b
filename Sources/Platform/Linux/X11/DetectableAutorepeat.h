#pragma once

namespace tavro::linuxos {

/// Asks the X server to leave out the releases that it otherwise puts before each repeated press, so that
/// every release that arrives is a finger's. Qt recognises those releases only when the press behind them
/// has already been read, and on a busy machine now and then it has not.
///
/// With it, a repeated press carries no mark: a press of a key that is already down is a repeat.
class DetectableAutorepeat {
public:
    DetectableAutorepeat() = delete;

    /// For the connection of the running application; once is enough. False when it is not connected to an X
    /// server, or to one that cannot do it. Main thread only.
    static bool enable();
};

} // namespace tavro::linuxos
