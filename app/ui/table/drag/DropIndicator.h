#pragma once

#include <QRect>

class PlistNode;
class OutlineView;
class QPainter;
class QPalette;

/// Shows where a drop would go: a line between two rows, across all columns, a ring on it at the
/// level of indentation, and a frame around the row of the container that would receive it. In the
/// coordinates of the viewport.
struct DropIndicator {
    QRect line;
    QRect ring;
    QRect container;  ///< empty if the container has no row

    /// The indicator below the first `position` rows of the view for a drop into `container`.
    static DropIndicator below(qint64 position, const PlistNode& container,
                               const OutlineView& view);

    /// Paints the indicator over the rows, in the colors of `palette`.
    void paint(QPainter& painter, const QPalette& palette) const;

    friend bool operator==(const DropIndicator&, const DropIndicator&) = default;
};
