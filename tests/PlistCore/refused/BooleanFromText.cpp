#include <PlistCore/PlistCore.h>

const plist::PlistValue value = plist::PlistValue::boolean("no");
