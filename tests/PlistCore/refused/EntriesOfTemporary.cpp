#include <PlistCore/PlistCore.h>

const auto entries = plist::PlistValue::dictionary().entries();
