#include <PlistCore/PlistCore.h>

const plist::PlistError& error = plist::PlistCodec::tryRead("").error();
