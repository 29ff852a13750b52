#pragma once

/// Everything that PlistCore offers: values, the three forms they are read from, the two they are
/// written in, conversions between text and values, and the search over values.

#include "PlistCore/Base64.h"
#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistCopy.h"
#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/PlistExpansion.h"
#include "PlistCore/PlistFile.h"
#include "PlistCore/PlistFormat.h"
#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistMatches.h"
#include "PlistCore/PlistResult.h"
#include "PlistCore/PlistSearch.h"
#include "PlistCore/PlistStep.h"
#include "PlistCore/PlistString.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/PlistType.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/PlistVersion.h"
