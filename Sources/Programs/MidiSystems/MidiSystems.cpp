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
    using Entry = MidiSystemTable::Entry;
    static const MidiSystemTable table({
#if defined(Q_OS_LINUX)
        Entry::tried(
            QStringLiteral("alsa"),
            [](MainActor& mainActor) { return std::make_unique<alsa::MidiSystemAdapter>(mainActor); }),
        Entry::tried(
            QStringLiteral("jack"),
            [](MainActor& mainActor) { return std::make_unique<jack::MidiSystemAdapter>(mainActor); }),
#elif defined(Q_OS_MACOS)
        Entry::tried(QStringLiteral("coremidi"),
                     [](MainActor&) { return std::make_unique<macos::MidiSystemAdapter>(); }),
#endif
    });
    return table;
}

} // namespace tavro
