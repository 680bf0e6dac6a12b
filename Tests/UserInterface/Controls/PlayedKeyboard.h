#pragma once

#include "UserInterface/Instrument.h"
#include "UserInterface/KeyboardGridModel.h"

#include <QObject>
#include <QStringList>

namespace tavro {

/// An on-screen keyboard's model over an instrument that reaches nobody.
class PlayedKeyboard : public QObject {
    Q_OBJECT
    Q_PROPERTY(tavro::KeyboardGridModel* grid READ grid CONSTANT)

public:
    [[nodiscard]] KeyboardGridModel* grid() { return &grid_; }

    /// What was played since the last call, in order: "on 60", "off 60".
    Q_INVOKABLE QStringList takeNotes();

private:
    Instrument instrument_;
    KeyboardGridModel grid_{instrument_.controller};
};

} // namespace tavro
