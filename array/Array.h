#pragma once

/// Every record array and every record of the library.

#include "array/BlobRectArray.h"
#include "array/MatchArray.h"
#include "array/PixelArray.h"
#include "array/PointArray.h"
#include "array/RectArray.h"
#include "array/Records.h"
#include "array/ValueArray.h"
