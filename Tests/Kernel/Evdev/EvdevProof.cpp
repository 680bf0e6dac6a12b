// Checks the evdev adapter against the input devices of the kernel it runs on, as root.
//   EvdevProof --list        the names of the checks, one a line
//   EvdevProof [NAME...]     runs them, or those; one line each: "ok NAME", or "failed NAME: REASON"
// The exit status is 0 when every check held.

#include "Check.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

using tavro::proof::Check;

std::vector<Check> allChecks() {
    std::vector<Check> checks;
    for (const auto& part :
         {tavro::proof::playingChecks(), tavro::proof::deviceChecks(), tavro::proof::copyChecks(),
          tavro::proof::grabChecks(), tavro::proof::endChecks(), tavro::proof::accessChecks(),
          tavro::proof::ruleChecks(), tavro::proof::seatChecks(), tavro::proof::terminalChecks(),
          tavro::proof::guardChecks(), tavro::proof::stressChecks()}) {
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

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto checks = allChecks();
    if (arguments.size() == 1 && arguments[0] == "--list") {
        for (const auto& check : checks) {
            std::cout << check.name << '\n';
        }
        return EXIT_SUCCESS;
    }
    auto status = EXIT_SUCCESS;
    std::size_t count = 0;
    for (const auto& check : checks) {
        if (arguments.empty() || std::ranges::find(arguments, check.name) != arguments.end()) {
            ++count;
            status = runOne(check) ? status : EXIT_FAILURE;
        }
    }
    if (count != (arguments.empty() ? checks.size() : arguments.size())) {
        std::cerr << "EvdevProof: some of the checks do not exist\n";
        return EXIT_FAILURE;
    }
    return status;
}
