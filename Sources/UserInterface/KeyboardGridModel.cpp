#include "UserInterface/KeyboardGridModel.h"

#include "NoteEngine/ChordDetector.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <tuple>
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
    : controller_(controller), cells_(currentCells()),
      touches_([this](Character key) { controller_.handleKeyDown(key); },
               [this](Character key) { controller_.handleKeyUp(key); }) {
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
    case chordRole:
        return cell.chord;
    case descriptionRole:
        return cell.description;
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
            {chordRole, QByteArrayLiteral("chord")},
            {descriptionRole, QByteArrayLiteral("description")},
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

void KeyboardGridModel::touch(int point, const QString& key) {
    touches_.moveTo(point, characterOf(key).value_or(U'\0'));
}

void KeyboardGridModel::endTouch(int point) {
    touches_.end(point);
}

std::vector<KeyboardGridModel::Cell> KeyboardGridModel::currentCells() const {
    const auto& layout = controller_.layout();
    std::vector<Cell> cells;
    for (const auto& row : std::views::reverse(layout.rows())) {
        for (const auto key : row.keys) {
            const auto* position = layout.position(key);
            Cell cell{
                .key = position->key,
                .row = static_cast<int>(position->rowIndex),
                .column = static_cast<int>(position->indexInRow),
                .note = {},
                .chord = {},
                .description = {},
                .zone = layout.zone(key, controller_.state().splitModeEnabled),
                .isPressed = controller_.activeKeys().contains(position->key),
                .isHighlighted = controller_.highlightedKeys().contains(position->key),
            };
            describe(cell);
            cells.push_back(std::move(cell));
        }
    }
    return cells;
}

void KeyboardGridModel::describe(Cell& cell) const {
    const auto& state = controller_.state();
    const bool preferFlats = ScaleEngine::preferFlats(state.rootSemitone, state.scaleName);
    auto notes = controller_.engine().notesForKey(cell.key, state);
    if (notes.empty()) {
        return;
    }
    std::ranges::sort(notes);
    QStringList names;
    for (const auto note : notes) {
        names.append(QString::fromStdString(ScaleEngine::noteName(note, preferFlats)));
    }
    cell.note = names.front();
    cell.description = names.join(QLatin1Char(' '));
    if (notes.size() > 1 && ChordDetector::detect(notes, preferFlats)) {
        cell.chord = QString::fromStdString(ChordDetector::displayName(notes, preferFlats));
        cell.description = tr("%1: %2").arg(cell.chord, cell.description);
    }
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
    // Most changes are a key that goes down or up: the scene then need not ask for its names again.
    const auto names = [](const Cell& of) { return std::tie(of.key, of.note, of.description, of.zone); };
    const auto roles =
        names(cells_[index]) == names(cell) ? QList<int>{isPressedRole, isHighlightedRole} : QList<int>{};
    cells_[index] = cell;
    const auto changed = this->index(static_cast<int>(index));
    Q_EMIT dataChanged(changed, changed, roles);
}

} // namespace tavro
