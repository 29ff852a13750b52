#include <PlistCore/PlistCore.h>

const std::string_view text = plist::PlistValue("a").text();
