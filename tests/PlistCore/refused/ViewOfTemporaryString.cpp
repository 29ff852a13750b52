#include <PlistCore/PlistCore.h>

const std::string_view view = plist::PlistString("a").view();
