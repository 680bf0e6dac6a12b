#pragma once

#include <functional>
#include <vector>

namespace tavro::proof {

/// One thing that must hold. It leaves nothing behind, and throws when it does not hold.
struct Check {
    const char* name;
    std::function<void()> run;
};

/// What is swallowed, what passes, and in which order.
std::vector<Check> playingChecks();

/// Several keyboards, and keyboards that come and go.
std::vector<Check> deviceChecks();

/// What a copy has in common with its keyboard: repetition, lights, axes.
std::vector<Check> copyChecks();

/// How the grab begins and ends while keys are held.
std::vector<Check> grabChecks();

/// How the tap ends by itself or with its program.
std::vector<Check> endChecks();

/// What the system must allow.
std::vector<Check> accessChecks();

/// What the udev rule does, and what is told about it.
std::vector<Check> ruleChecks();

/// Whose keyboards are opened.
std::vector<Check> seatChecks();

/// Several logins on one computer.
std::vector<Check> terminalChecks();

/// The program stops answering.
std::vector<Check> guardChecks();

/// Many keys, and more of them than can be read in time.
std::vector<Check> stressChecks();

} // namespace tavro::proof
