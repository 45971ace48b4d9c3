#pragma once

// Numbers from texts and texts from numbers, with a point in every locale.

#include "base/number_picture.h"
#include "base/number_reading.h"
#include "base/number_text.h"
