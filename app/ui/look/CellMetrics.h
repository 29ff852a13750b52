#pragma once

#include <QFont>

/// The measures of a table cell, in device-independent pixels. They are given for a font of 13
/// pixels and grow with larger ones.
class CellMetrics {
public:
    explicit CellMetrics(const QFont& font);

    int rowHeight() const noexcept { return rowHeight_; }

    /// How far each level is indented.
    int indentation() const noexcept { return scaled(14); }

    /// The size of the disclosure control, and of the other glyphs in a cell, which are square.
    int sign() const noexcept { return scaled(12); }

    /// Between the parts of a cell.
    int spacing() const noexcept { return scaled(4); }

    /// Between the edges of a cell and its contents.
    int padding() const noexcept { return scaled(6); }

    /// Any length given for a font of 13 pixels.
    int scaled(int length) const noexcept;

private:
    double scale_;
    int rowHeight_;
};
