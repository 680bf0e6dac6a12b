// Writes settings for tests that kill it or run it twice at once.
//
//   settings-writer FOLDER lists FIRST          stores one numbered list after the other, for ever; tells on
//                                               standard output when each is begun and when it is stored
//   settings-writer FOLDER keys PREFIX COUNT    stores so many values under keys of their own; status 1 when
//                                               one could not be stored

#include "Platform/Linux/Settings/NumberedList.h"
#include "Platform/Linux/Settings/StoredAtLast.h"

#include <string>
#include <vector>

#include <unistd.h>

namespace {

using tavro::UserDefaults;

void tell(const std::string& word, int number) {
    const auto line = word + " " + std::to_string(number) + "\n";
    if (write(STDOUT_FILENO, line.data(), line.size()) < 0) {
        _exit(3);
    }
}

int storeLists(UserDefaults& defaults, int first) {
    for (int number = first;; ++number) {
        const UserDefaults::Data list{tavro::linuxos::numberedList(number)};
        tell("begin", number);
        if (!defaults.setValue("list", list)) {
            return 1;
        }
        tell("end", number);
    }
}

int storeKeys(UserDefaults& defaults, const std::string& prefix, int count) {
    for (int number = 0; number < count; ++number) {
        if (!tavro::linuxos::storedAtLast(defaults, prefix + std::to_string(number),
                                          std::to_string(number))) {
            return 1;
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 3) {
        return 2;
    }
    tavro::linuxos::UserDefaultsAdapter defaults{std::filesystem::path(arguments[0])};
    if (arguments[1] == "lists") {
        return storeLists(defaults, std::stoi(arguments[2]));
    }
    return arguments.size() == 4 ? storeKeys(defaults, arguments[2], std::stoi(arguments[3])) : 2;
}
