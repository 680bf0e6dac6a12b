#pragma once

namespace tavro::macos {

/// Plays the alert sound that the user has chosen in the system's settings. Main thread only.
void systemBeep();

} // namespace tavro::macos
