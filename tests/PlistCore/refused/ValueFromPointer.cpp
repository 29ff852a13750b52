#include <PlistCore/PlistCore.h>

int number = 0;
const plist::PlistValue value = &number;
