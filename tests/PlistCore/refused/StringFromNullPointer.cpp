#include <PlistCore/PlistCore.h>

const plist::PlistString text = nullptr;
