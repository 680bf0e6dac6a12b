#pragma once

#include <QAccessible>

#include <string>
#include <vector>

namespace tavro {

/// What a screen reader finds in a window: Qt's own tree of it.
class AccessibleTree {
public:
    /// Turns accessibility on for the program. The root must outlive this; null is an empty tree.
    explicit AccessibleTree(QObject* root);

    /// Whatever a reader could not tell about, each with the way to it from the window: something that can be
    /// used or is meant to be read and has no name, and a control without its value.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

    /// One line for each visible node, in order: its role and its name, as "Button Help".
    [[nodiscard]] const std::vector<std::string>& nodes() const { return nodes_; }

    /// The first node with this line; null when there is none.
    [[nodiscard]] QAccessibleInterface* find(const std::string& line) const;

private:
    void visit(QAccessibleInterface& node, const std::string& way);
    void check(QAccessibleInterface& node, const std::string& way);

    std::vector<std::string> problems_;
    std::vector<std::string> nodes_;
    std::vector<QAccessibleInterface*> interfaces_;
};

} // namespace tavro
