#include <PlistCore/PlistCore.h>

const plist::PlistValue value = plist::PlistValue::integer(3.7);
