#include <PlistCore/PlistCore.h>

const auto keys = plist::PlistValue::dictionary().keys();
