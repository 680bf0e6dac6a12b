// Checks the ALSA adapter, and the MIDI output above it, against the sequencer of the kernel it runs on.
//   AlsaProof --list               the names of the checks, one a line
//   AlsaProof                      runs them; one line each: "ok NAME", or "failed NAME: REASON"
//   AlsaProof --fails STATUS       where the sequencer cannot be opened: the one check for that
//   AlsaProof --fails STATUS --as USER   the same as the user with this number
// The exit status is 0 when every check held.

#include "Check.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include <unistd.h>

namespace {

using tavro::proof::Check;

std::vector<Check> allChecks() {
    std::vector<Check> checks;
    for (auto part :
         {tavro::proof::sourceChecks(), tavro::proof::destinationChecks(), tavro::proof::listChecks(),
          tavro::proof::vanishingChecks(), tavro::proof::strumChecks(), tavro::proof::strumRouteChecks(),
          tavro::proof::queueChecks(), tavro::proof::livePlayerChecks(),
          tavro::proof::foreignProgramChecks()}) {
        checks.insert(checks.end(), part.begin(), part.end());
    }
    return checks;
}

bool runOne(const Check& check) {
    try {
        check.run();
        std::cout << "ok " << check.name << std::endl;
        return true;
    } catch (const std::exception& error) {
        std::string reason = error.what();
        std::ranges::replace(reason, '\n', ' ');
        std::cout << "failed " << check.name << ": " << reason << std::endl;
        return false;
    }
}

int runAll(const std::vector<Check>& checks) {
    auto status = EXIT_SUCCESS;
    for (const auto& check : checks) {
        if (!runOne(check)) {
            status = EXIT_FAILURE;
        }
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        return runAll(allChecks());
    }
    if (arguments.size() == 1 && arguments[0] == "--list") {
        for (const auto& check : allChecks()) {
            std::cout << check.name << '\n';
        }
        return EXIT_SUCCESS;
    }
    if ((arguments.size() == 2 || arguments.size() == 4) && arguments[0] == "--fails") {
        if (arguments.size() == 4 &&
            (arguments[2] != "--as" || seteuid(static_cast<uid_t>(std::stoul(arguments[3]))) != 0)) {
            std::cerr << "AlsaProof: cannot become the user " << arguments[3] << '\n';
            return EXIT_FAILURE;
        }
        return runAll({tavro::proof::creationFails(std::stoi(arguments[1]))});
    }
    std::cerr << "AlsaProof: usage: AlsaProof [--list | --fails STATUS [--as USER]]\n";
    return EXIT_FAILURE;
}
