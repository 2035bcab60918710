#pragma once
// What a unit test of the library begins with.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <ranges>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/CountedObject.h"
#include "tests/support/Outcome.h"
#include "zorvane/platform/Variant.h"
