#include "support/choices.hpp"

#include <vorm/evaluation/text/natural_order.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

using vorm::test::anyIndex;
using vorm::test::anyOf;

std::string anyName() {
    std::string name;
    for (std::size_t i = anyIndex(7); i > 0; --i) {
        name += anyOf<std::string>({"a", "b", "/", ".", "0", "1", "9", "\xff"});
    }
    return name;
}

TEST(NaturalOrder, CountsAsPeopleDo) {
    std::vector<std::string> names{"run10.csv", "run2.csv",  "run02.csv",
                                   "run.csv",   "run2b.csv", "Run3.csv",
                                   "run2/11",   "run2/9",    "run99999999999999999999999.csv"};
    std::sort(names.begin(), names.end(), isNaturallyBefore);
    EXPECT_EQ(names, (std::vector<std::string>{"Run3.csv", "run.csv", "run2.csv", "run02.csv",
                                               "run2/9", "run2/11", "run2b.csv", "run10.csv",
                                               "run99999999999999999999999.csv"}));
}

// std::sort is undefined for anything else.
RC_GTEST_PROP(NaturalOrder, IsATotalOrder, ()) {
    const std::string a = anyName();
    const std::string b = anyName();
    const std::string c = anyName();
    RC_ASSERT(isNaturallyBefore(a, b) + isNaturallyBefore(b, a) + (a == b ? 1 : 0) == 1);
    RC_ASSERT(!(isNaturallyBefore(a, b) && isNaturallyBefore(b, c)) || isNaturallyBefore(a, c));
}

}  // namespace
}  // namespace vorm::evaluation
