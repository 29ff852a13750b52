#pragma once

#include <QString>

/// Whether two paths lead to one file, be it by links of either kind. Paths at which nothing is
/// lead to the same file when they are the same.
bool isSameFile(const QString& one, const QString& other);
