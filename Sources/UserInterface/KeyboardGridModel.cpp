#include "UserInterface/KeyboardGridModel.h"

#include "NoteEngine/ChordVoicing.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <utility>

namespace tavro {

namespace {

QString textOf(Character character) {
    return QString::fromUcs4(&character, 1);
}

std::optional<Character> characterOf(const QString& text) {
    const auto characters = text.toUcs4();
    return characters.size() == 1 ? std::optional<Character>(characters.front()) : std::nullopt;
}

QString printed(Character character) {
    // The one to one mapping: no keyboard prints two letters on the key of the sharp s.
    return textOf(QChar::toUpper(static_cast<char32_t>(character)));
}

} // namespace

KeyboardGridModel::KeyboardGridModel(PerformanceController& controller)
    : controller_(controller), cells_(currentCells()) {
    connect(&controller_, &PerformanceController::stateChanged, this, &KeyboardGridModel::follow);
    connect(&controller_, &PerformanceController::keyboardDisplayChanged, this,
            &KeyboardGridModel::followDisplay);
    connect(&controller_, &PerformanceController::currentChordTextChanged, this,
            &KeyboardGridModel::chordTextChanged);
}

int KeyboardGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.size());
}

QVariant KeyboardGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const auto& cell = cells_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case keyRole:
        return textOf(cell.key);
    case labelRole:
        return printed(cell.key);
    case rowRole:
        return cell.row;
    case columnRole:
        return cell.column;
    case noteRole:
        return cell.note;
    case isMelodyRole:
        return cell.zone == KeyPerformanceZone::melody;
    case isPressedRole:
        return cell.isPressed;
    case isHighlightedRole:
        return cell.isHighlighted;
    default:
        return {};
    }
}

QHash<int, QByteArray> KeyboardGridModel::roleNames() const {
    return {{keyRole, QByteArrayLiteral("key")},
            {labelRole, QByteArrayLiteral("label")},
            {rowRole, QByteArrayLiteral("row")},
            {columnRole, QByteArrayLiteral("column")},
            {noteRole, QByteArrayLiteral("note")},
            {isMelodyRole, QByteArrayLiteral("isMelody")},
            {isPressedRole, QByteArrayLiteral("isPressed")},
            {isHighlightedRole, QByteArrayLiteral("isHighlighted")}};
}

QString KeyboardGridModel::chordText() const {
    return controller_.currentChordText();
}

bool KeyboardGridModel::isSounding() const {
    return controller_.currentChordText() != QLatin1String("-");
}

void KeyboardGridModel::press(const QString& key) {
    if (const auto character = characterOf(key)) {
        controller_.handleKeyDown(*character);
    }
}

void KeyboardGridModel::release(const QString& key) {
    if (const auto character = characterOf(key)) {
        controller_.handleKeyUp(*character);
    }
}

std::vector<KeyboardGridModel::Cell> KeyboardGridModel::currentCells() const {
    const auto& state = controller_.state();
    const auto& layout = controller_.layout();
    const auto& scale = ScaleEngine::scale(state.scaleName);
    const bool preferFlats = ScaleEngine::preferFlats(state.rootSemitone, state.scaleName);
    std::vector<Cell> cells;
    for (const auto& row : std::views::reverse(layout.rows())) {
        for (const auto key : row.keys) {
            const auto* position = layout.position(key);
            const auto note = ChordVoicing::singleNote(*position, state, scale);
            cells.push_back({
                .key = position->key,
                .row = static_cast<int>(position->rowIndex),
                .column = static_cast<int>(position->indexInRow),
                .note = QString::fromStdString(ScaleEngine::noteName(note, preferFlats)),
                .zone = layout.zone(key, state.splitModeEnabled),
                .isPressed = controller_.activeKeys().contains(position->key),
                .isHighlighted = controller_.highlightedKeys().contains(position->key),
            });
        }
    }
    return cells;
}

void KeyboardGridModel::follow() {
    auto cells = currentCells();
    if (cells.size() != cells_.size()) {
        beginResetModel();
        cells_ = std::move(cells);
        endResetModel();
        return;
    }
    for (std::size_t index = 0; index < cells.size(); ++index) {
        replaceCell(index, cells[index]);
    }
}

void KeyboardGridModel::followDisplay() {
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        auto cell = cells_[index];
        cell.isPressed = controller_.activeKeys().contains(cell.key);
        cell.isHighlighted = controller_.highlightedKeys().contains(cell.key);
        replaceCell(index, cell);
    }
}

void KeyboardGridModel::replaceCell(std::size_t index, const Cell& cell) {
    if (cells_[index] == cell) {
        return;
    }
    cells_[index] = cell;
    const auto changed = this->index(static_cast<int>(index));
    Q_EMIT dataChanged(changed, changed);
}

} // namespace tavro
