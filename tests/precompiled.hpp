// What most tests include, compiled once for each way of compiling them. No source relies on it:
// each includes what it uses.

#include <vorm/assessments.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>
