#include <PlistCore/PlistCore.h>

const plist::PlistValue value = 'x';
