#include <PlistCore/PlistCore.h>

const plist::PlistValue& child = plist::PlistValue::array({1})[0];
