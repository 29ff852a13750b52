#include <PlistCore/PlistCore.h>

const plist::PlistValue value = plist::PlistValue::uid(1.0);
