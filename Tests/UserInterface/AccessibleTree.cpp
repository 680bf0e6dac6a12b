#include "UserInterface/AccessibleTree.h"

#include <QMetaEnum>
#include <QVariant>

#include <algorithm>
#include <array>

namespace tavro {

namespace {

/// These say nothing without a name, whether or not they can have the focus.
constexpr std::array namedRoles{
    QAccessible::AlertMessage, QAccessible::Button,      QAccessible::ButtonMenu,   QAccessible::CheckBox,
    QAccessible::ComboBox,     QAccessible::Dialog,      QAccessible::EditableText, QAccessible::Graphic,
    QAccessible::Heading,      QAccessible::HelpBalloon, QAccessible::Indicator,    QAccessible::Link,
    QAccessible::ListItem,     QAccessible::MenuItem,    QAccessible::PageTab,      QAccessible::PopupMenu,
    QAccessible::ProgressBar,  QAccessible::RadioButton, QAccessible::Slider,       QAccessible::SpinBox,
    QAccessible::StaticText,   QAccessible::Window};

std::string roleOf(const QAccessibleInterface& node) {
    const auto role = static_cast<int>(node.role());
    const auto* name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name == nullptr ? "Role " + std::to_string(role) : name;
}

std::string nameOf(const QAccessibleInterface& node) {
    return node.text(QAccessible::Name).toStdString();
}

std::string lineOf(const QAccessibleInterface& node) {
    const auto name = nameOf(node);
    return name.empty() ? roleOf(node) : roleOf(node) + " " + name;
}

bool hasName(const QAccessibleInterface& node) {
    return !node.text(QAccessible::Name).trimmed().isEmpty();
}

bool needsName(QAccessibleInterface& node) {
    for (const auto role : namedRoles) {
        if (node.role() == role) {
            return true;
        }
    }
    auto* actions = node.actionInterface();
    return node.state().focusable ||
           (actions != nullptr && actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

bool hasNumber(QAccessibleInterface& node) {
    auto* value = node.valueInterface();
    return value != nullptr && value->currentValue().isValid() && value->minimumValue().isValid() &&
           value->maximumValue().isValid() &&
           value->minimumValue().toDouble() < value->maximumValue().toDouble();
}

bool hasWords(const QAccessibleInterface& node) {
    return !node.text(QAccessible::Value).isEmpty() || !node.text(QAccessible::Description).isEmpty();
}

/// What is missing of the value of a control that has one; empty when nothing is.
std::string missingValue(QAccessibleInterface& node) {
    switch (node.role()) {
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::ProgressBar:
        return hasNumber(node) ? "" : "has no value between two bounds";
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
        return hasWords(node) ? "" : "does not tell what is in it";
    default:
        return "";
    }
}

} // namespace

AccessibleTree::AccessibleTree(QObject* root) {
    QAccessible::setActive(true);
    if (auto* node = QAccessible::queryAccessibleInterface(root)) {
        visit(*node, {});
    }
}

QAccessibleInterface* AccessibleTree::find(const std::string& line) const {
    const auto found = std::find(nodes_.begin(), nodes_.end(), line);
    return found == nodes_.end() ? nullptr : interfaces_[static_cast<std::size_t>(found - nodes_.begin())];
}

void AccessibleTree::visit(QAccessibleInterface& node, const std::string& way) {
    if (node.state().invisible) {
        return;
    }
    nodes_.push_back(lineOf(node));
    interfaces_.push_back(&node);
    check(node, way);
    for (int index = 0; index < node.childCount(); ++index) {
        if (auto* child = node.child(index)) {
            visit(*child, way + lineOf(node) + " > ");
        }
    }
}

void AccessibleTree::check(QAccessibleInterface& node, const std::string& way) {
    if (needsName(node) && !hasName(node)) {
        problems_.push_back(way + lineOf(node) + ": has no name");
    }
    if (const auto missing = missingValue(node); !missing.empty()) {
        problems_.push_back(way + lineOf(node) + ": " + missing);
    }
}

} // namespace tavro
