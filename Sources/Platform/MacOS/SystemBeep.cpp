#include "Platform/MacOS/SystemBeep.h"

#include <AudioToolbox/AudioToolbox.h>

namespace tavro::macos {

void systemBeep() {
    AudioServicesPlayAlertSound(kSystemSoundID_UserPreferredAlert);
}

} // namespace tavro::macos
