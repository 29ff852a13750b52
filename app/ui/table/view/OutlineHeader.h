#pragma once

#include <QHeaderView>

/// The header of the outline, whose columns have minimum and maximum widths. The last column takes
/// what the others leave, and more if the user drags it wider.
class OutlineHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit OutlineHeader(QWidget* parent = nullptr);

    /// In device-independent pixels, for the font of this widget.
    struct Limits {
        int minimum = 0;
        int ideal = 0;
        int maximum = 0;
    };

    Limits limits(int section) const;

    /// Gives all columns their ideal widths; to be called once, when the columns exist.
    void applyIdealWidths();

    /// Lets the last column fill `width`, the width of the viewport.
    void fill(int width);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;

private:
    void keepWithinLimits(int section, int width);

    int viewportWidth_ = 0;
    int wantedLastWidth_ = 0;
    bool isAdjusting_ = false;
};
