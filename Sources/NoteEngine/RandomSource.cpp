#include "NoteEngine/RandomSource.h"

#include <memory>
#include <random>

namespace tavro {

RandomSource systemRandomSource() {
    // Seeded once: asking the system for every note would put a system call on the road of a key press.
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
    auto generator = std::make_shared<std::mt19937>(seed);
    return [generator] { return static_cast<std::uint32_t>((*generator)()); };
}

} // namespace tavro
