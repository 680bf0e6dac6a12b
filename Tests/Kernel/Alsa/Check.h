#pragma once

#include <functional>
#include <vector>

namespace tavro::proof {

/// One thing that must hold. It leaves nothing behind, and throws when it does not hold.
struct Check {
    const char* name;
    std::function<void()> run;
};

/// What listeners of "TAVRO Out" get and how they are counted.
std::vector<Check> sourceChecks();

/// What chosen destinations get.
std::vector<Check> destinationChecks();

/// What is listed, and how the list follows programs that come and go.
std::vector<Check> listChecks();

/// Destinations that vanish, return or are taken by others while notes sound.
std::vector<Check> vanishingChecks();

/// Strums whose notes wait in the sequencer's queue, and what takes them back.
std::vector<Check> strumChecks();

/// Strums whose way changes while they are played.
std::vector<Check> strumRouteChecks();

/// The queue itself: how many wait, what must not overtake them, and that it rests.
std::vector<Check> queueChecks();

/// Whole scripts, by the player in a process of its own.
std::vector<Check> livePlayerChecks();

/// What other programs of the system see: aseqdump and aconnect.
std::vector<Check> foreignProgramChecks();

/// For a machine where the sequencer cannot be opened: the creation fails with this status.
Check creationFails(int status);

} // namespace tavro::proof
