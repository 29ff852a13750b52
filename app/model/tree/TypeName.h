#pragma once

#include <QString>

#include "app/model/runtime/Plist.h"

/// The names of the types for people, in their language. Files never hold them.
namespace TypeName {

QString of(PlistType type);

}  // namespace TypeName
