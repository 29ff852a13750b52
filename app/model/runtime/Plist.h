#pragma once

/// The format library, under the names by which the application knows it.

#include "PlistCore/PlistCore.h"
