#include "Platform/Linux/Jack/PortNames.h"

#include <jack/jack.h>

namespace tavro::jack {

PortNames::PortNames(const char** names) : names_(names) {
    for (auto** name = names_; name != nullptr && *name != nullptr; ++name) {
        list_.push_back(*name);
    }
}

PortNames::~PortNames() {
    if (names_ != nullptr) {
        jack_free(names_);
    }
}

} // namespace tavro::jack
