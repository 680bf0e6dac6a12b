#include "Programs/MidiSystems/MidiSystems.h"

#include <QtGlobal>

#if defined(Q_OS_LINUX)
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#elif defined(Q_OS_MACOS)
#include "Platform/MacOS/MidiSystemAdapter.h"
#endif

namespace tavro {

const MidiSystemTable& MidiSystems::ofThisPlatform() {
    static const MidiSystemTable table({
#if defined(Q_OS_LINUX)
        {QStringLiteral("alsa"), QStringLiteral("ALSA"),
         [](MainActor& mainActor, const MidiSystemOptions&) {
             return std::make_unique<alsa::MidiSystemAdapter>(mainActor);
         }},
        {QStringLiteral("jack"), QStringLiteral("JACK"),
         [](MainActor& mainActor, const MidiSystemOptions& options) {
             return std::make_unique<jack::MidiSystemAdapter>(mainActor, options);
         },
         true},
#elif defined(Q_OS_MACOS)
        {QStringLiteral("coremidi"), QStringLiteral("CoreMIDI"),
         [](MainActor&, const MidiSystemOptions&) { return std::make_unique<macos::MidiSystemAdapter>(); }},
#endif
    });
    return table;
}

} // namespace tavro
