#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavro {

/// Finds a MIDI system that can be used. Main thread only.
class MidiSystemChooser {
public:
    struct Candidate {
        /// What users call it by.
        QString name;
        std::function<std::unique_ptr<MidiSystem>()> make;
    };

    struct Failure {
        QString name;
        /// The platform's number for why no client could be created.
        std::int32_t status;
    };

    struct Choice {
        /// Null when there is none.
        std::unique_ptr<MidiSystem> system;
        /// Those that were tried before it, in order.
        std::vector<Failure> failures;

        /// Why there is none, for a person who reads it in a terminal.
        [[nodiscard]] std::string reasons() const;
    };

    /// Takes the first that can be used.
    static QString automatic() { return QStringLiteral("auto"); }

    /// Whether a user may ask for this. Not every name has its system on every platform.
    [[nodiscard]] static bool isName(const QString& text);

    /// The candidates in the order in which they are tried.
    explicit MidiSystemChooser(std::vector<Candidate> candidates) : candidates_(std::move(candidates)) {}

    /// The first candidate of this name, or of any for `automatic`, with which a client can be created. The
    /// client that was created for the trial is disposed again.
    [[nodiscard]] Choice choose(const QString& name) const;

private:
    std::vector<Candidate> candidates_;
};

} // namespace tavro
