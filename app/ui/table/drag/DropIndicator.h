#pragma once

#include <QRect>

class PlistNode;
class OutlineView;
class QPainter;
class QPalette;

/// Shows where something that is dragged would go: a line between two rows, over all columns, a
/// ring on it at the level of indentation, and a frame around the row of the container that it
/// would become a part of. In the coordinates of the viewport.
struct DropIndicator {
    QRect line;
    QRect ring;
    QRect container;  ///< empty if there is no such row

    /// The line below the first `position` rows of the table for something that goes into
    /// `container`.
    static DropIndicator below(qint64 position, const PlistNode& container,
                               const OutlineView& view);

    void paint(QPainter& painter, const QPalette& palette) const;

    friend bool operator==(const DropIndicator&, const DropIndicator&) = default;
};
