#pragma once

namespace tavro::linuxos {

/// The X server's bell, which the desktop may replace by a sound of its own. Elsewhere the bell of the
/// terminal that the program was started from, and without a terminal nothing: Wayland has no such request.
/// The application must be running. Main thread only.
void systemBeep();

} // namespace tavro::linuxos
