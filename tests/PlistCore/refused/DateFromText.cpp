#include <PlistCore/PlistCore.h>

const plist::PlistValue value = plist::PlistValue::date("2001-01-01");
