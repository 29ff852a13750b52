#pragma once

#include "app/desktop/session/ColorScheme.h"

/// Keeps the colours of all windows as the user wants them: where dark windows are wanted and those
/// of the desktop's theme are light, they get a dark palette of our own, and the theme's again when
/// that ends. (Qt does not follow this wish by itself before version 6.5.)
class Appearance {
public:
    /// Changes the palette of the application if it has to.
    void follow(ColorScheme::Preference preference);

private:
    bool isOurs_ = false;
};
