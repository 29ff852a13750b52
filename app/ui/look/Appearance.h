#pragma once

#include "app/desktop/session/ColorScheme.h"

/// Follows the user's wish for dark or light windows: where dark ones are wanted and the desktop's
/// theme is light, they get a dark palette of our own, until the wish ends. (Qt follows it by
/// itself from version 6.5 on.)
class Appearance {
public:
    /// Changes the palette of the application if necessary.
    void follow(ColorScheme::Preference preference);

private:
    bool isOurs_ = false;
};
