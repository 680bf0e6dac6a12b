#pragma once

#include "KeyboardMapping/KeyboardLayout.h"
#include "Performance/PerformanceController.h"
#include "UserInterface/KeyTouches.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace tavro {

/// The on-screen keyboard: one row of the model per key, top row first, each row from left to right. Follows
/// the controller, and tells of changes only for keys that changed.
class KeyboardGridModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The name of the chord that sounds; "-" when nothing does.
    Q_PROPERTY(QString chordText READ chordText NOTIFY chordTextChanged)
    Q_PROPERTY(bool isSounding READ isSounding NOTIFY chordTextChanged)

public:
    enum Role {
        /// The character as text, to be handed to `press` and `release`.
        keyRole = Qt::UserRole + 1,
        /// The character as it is printed on the key.
        labelRole,
        /// Index of the row of keys, 0 being the bottom row.
        rowRole,
        /// Index within the row, from the left.
        columnRole,
        /// Name of the note that the key plays, or of the lowest one of its chord.
        noteRole,
        /// Name of the chord that the key plays; empty for a single note and for a chord without a name.
        chordRole,
        /// All that the key plays, in words.
        descriptionRole,
        /// Whether Split Mode makes it play melody notes.
        isMelodyRole,
        isPressedRole,
        isHighlightedRole,
    };

    /// The controller must outlive this.
    explicit KeyboardGridModel(PerformanceController& controller);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] QString chordText() const;
    [[nodiscard]] bool isSounding() const;

    /// A press and a release of the key with this character by the mouse. Other texts do nothing.
    Q_INVOKABLE void press(const QString& key);
    Q_INVOKABLE void release(const QString& key);

    /// The mouse or a finger, told apart by any number, is down and on this key; the empty text is beside
    /// every key. Going on to another key plays that one and releases the one before.
    Q_INVOKABLE void touch(int point, const QString& key);
    Q_INVOKABLE void endTouch(int point);

Q_SIGNALS:
    void chordTextChanged();

private:
    struct Cell {
        Character key;
        int row;
        int column;
        QString note;
        QString chord;
        QString description;
        KeyPerformanceZone zone;
        bool isPressed;
        bool isHighlighted;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    [[nodiscard]] std::vector<Cell> currentCells() const;
    void follow();
    void followDisplay();
    void replaceCell(std::size_t index, const Cell& cell);
    void describe(Cell& cell) const;

    PerformanceController& controller_;
    std::vector<Cell> cells_;
    KeyTouches touches_;
};

} // namespace tavro
