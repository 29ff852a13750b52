#include <PlistCore/PlistCore.h>

const auto bytes = plist::PlistValue::data({}).dataValue();
