#pragma once

#include <QColor>

/// The contrast between two colours by the Web Content Accessibility Guidelines, from 1 to 21.
double contrast(const QColor& one, const QColor& other);
