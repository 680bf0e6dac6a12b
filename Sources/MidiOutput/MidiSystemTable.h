#pragma once

#include "Concurrency/MainActor.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tavro {

/// The MIDI systems that a program offers, in the order in which they are looked for. Main thread only.
class MidiSystemTable {
public:
    using Maker = std::function<std::unique_ptr<MidiSystem>(MainActor&, const MidiSystemOptions&)>;

    struct Entry {
        /// What users call it by: in commands and files, and in the window.
        QString name;
        QString title;
        /// The main actor must outlive the result.
        Maker make;
        /// Whether it works in periods whose length programs may ask for.
        bool hasPeriods = false;
    };

    /// Those of one name, ready to be tried in order.
    struct Candidates {
        QStringList names;
        std::vector<std::unique_ptr<MidiSystem>> systems;

        [[nodiscard]] std::vector<MidiSystem*> pointers() const;

        /// Why none of them can be used, for a person who reads it in a terminal: with the number of each.
        [[nodiscard]] std::string reasons(std::span<const std::int32_t> failures) const;
    };

    explicit MidiSystemTable(std::vector<Entry> entries) : entries_(std::move(entries)) {}

    /// The name for the first that can be used.
    static QString automatic() { return QStringLiteral("auto"); }

    /// Whether a user may ask for this.
    [[nodiscard]] bool isName(const QString& text) const;

    /// What a user may ask for: "auto|alsa|jack" for a help text, "auto, alsa or jack" for a sentence.
    [[nodiscard]] QString alternatives() const;
    [[nodiscard]] QString sentence() const;

    /// The system of this name, or all for `automatic`; none where the table has none of the name.
    [[nodiscard]] Candidates candidates(const QString& name, MainActor& mainActor,
                                        const MidiSystemOptions& options = {}) const;

    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

private:
    [[nodiscard]] QStringList names() const;

    std::vector<Entry> entries_;
};

} // namespace tavro
