// The BASIC runtime's functions that the transformers are written with.
#pragma once

#include "base/numbers.h"  // IWYU pragma: export
#include "base/strings.h"  // IWYU pragma: export
