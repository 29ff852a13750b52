#include <PlistCore/PlistCore.h>

const plist::PlistFile& file = *plist::PlistCodec::tryRead("");
