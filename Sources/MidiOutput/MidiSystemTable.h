#pragma once

#include "Concurrency/MainActor.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavro {

/// The MIDI systems that a program offers, in the order in which they are looked for. Main thread only.
class MidiSystemTable {
public:
    using Maker = std::function<std::unique_ptr<MidiSystem>(MainActor&)>;

    struct Entry {
        /// What users call it by.
        QString name;
        /// 0 when it can be used at the moment, otherwise the platform's number for why not.
        std::function<std::int32_t(MainActor&)> available;
        /// The main actor must outlive the result.
        Maker make;

        /// One that is available when `trial` says so.
        [[nodiscard]] static Entry tried(QString name, Maker make);
    };

    struct Failure {
        QString name;
        /// The platform's number.
        std::int32_t status;
    };

    struct Choice {
        QString name;
        /// Null when the table has none of the name.
        std::unique_ptr<MidiSystem> system;
        /// Those that were looked for before it, in order.
        std::vector<Failure> failures;

        /// Why none can be used when no client of this one can be created either, for a person who reads it
        /// in a terminal. The status is that of the creation.
        [[nodiscard]] std::string reasons(std::int32_t status) const;
    };

    explicit MidiSystemTable(std::vector<Entry> entries) : entries_(std::move(entries)) {}

    /// 0 when a client can be created, otherwise the platform's number for why not. The client is disposed
    /// again.
    [[nodiscard]] static std::int32_t trial(MidiSystem& system);

    /// The name for the first that can be used.
    static QString automatic() { return QStringLiteral("auto"); }

    /// Whether a user may ask for this.
    [[nodiscard]] bool isName(const QString& text) const;

    /// What a user may ask for: "auto|alsa|jack" for a help text, "auto, alsa or jack" for a sentence.
    [[nodiscard]] QString alternatives() const;
    [[nodiscard]] QString sentence() const;

    /// The system of this name, or of any for `automatic`: the first that is available. The last that is left
    /// is taken unasked, since there is no other in its place; so is the only one.
    [[nodiscard]] Choice choose(const QString& name, MainActor& mainActor) const;

private:
    [[nodiscard]] QStringList names() const;

    std::vector<Entry> entries_;
};

} // namespace tavro
