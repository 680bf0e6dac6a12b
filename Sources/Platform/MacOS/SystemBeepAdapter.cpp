#include "Platform/MacOS/SystemBeepAdapter.h"

#include <AudioToolbox/AudioToolbox.h>

namespace tavro::macos {

void SystemBeepAdapter::beep() {
    AudioServicesPlayAlertSound(kSystemSoundID_UserPreferredAlert);
}

} // namespace tavro::macos
