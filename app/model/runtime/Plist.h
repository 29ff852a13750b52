#pragma once

/// The format library, under the names by which the application knows it.

#include "PlistCore/PlistCore.h"

using plist::allPlistFormats;
using plist::allPlistTypes;
using plist::decimalText;
using plist::displayName;
using plist::greatestPlistInteger;
using plist::isContainer;
using plist::isValidPlistInteger;
using plist::isWritable;
using plist::leastPlistInteger;
using plist::PlistBytes;
using plist::plistCheck;
using plist::plistCheckFailed;
using plist::PlistCheckHandler;
using plist::PlistEntry;
using plist::PlistError;
using plist::PlistFile;
using plist::PlistFormat;
using plist::PlistInteger;
using plist::PlistMatches;
using plist::PlistString;
using plist::PlistType;
using plist::plistTypeFromRawValue;
using plist::PlistValue;
using plist::rawValue;
using plist::setPlistCheckHandler;

namespace Base64 = plist::Base64;
namespace PlistCodec = plist::PlistCodec;
namespace PlistCopy = plist::PlistCopy;
namespace PlistDate = plist::PlistDate;
namespace PlistExpansion = plist::PlistExpansion;
namespace PlistSearch = plist::PlistSearch;
namespace PlistText = plist::PlistText;
