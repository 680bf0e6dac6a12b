#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

namespace tavro::proof {

Check creationFails(int status) {
    return {"creation_fails_with_a_status_and_stays_silent", [status] {
                QtMainActor mainActor;
                alsa::MidiSystemAdapter adapter(mainActor);
                const auto client = adapter.createClient("TAVRO", [] {});
                expectEqual(std::to_string(client.status), std::to_string(status), "the status");
                expectEqual(client.reference, 0, "the reference");
                expect(adapter.createSource(client.reference, "TAVRO Out").reference == 0,
                       "there is a source");
                expect(!adapter.listeners(0), "there are listeners");

                Instrument instrument;
                expectEqual(instrument.manager().statusText().toStdString(),
                            "MIDI Client Fehler " + std::to_string(status), "the status for the user");
                expectEqual(instrument.manager().destinations().size(), 0, "destinations");
                instrument.noteOn(60);
                instrument.manager().sendAllNotesOff(1);
            }};
}

} // namespace tavro::proof
