#include <vorm/evaluation/text/nearest_names.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

using Names = std::vector<std::string>;

TEST(NearestNames, FindsMisspellingsNearestFirst) {
    const Names candidates{"speed", "speed_limit", "brake", "sped_up", "Wheel Speed"};
    EXPECT_EQ(nearestNames("sped", candidates), (Names{"speed"}));
    EXPECT_EQ(nearestNames("SPEED", candidates), (Names{"speed"}));
    EXPECT_EQ(nearestNames("wheel_speed", candidates), (Names{"Wheel Speed"}));
    EXPECT_EQ(nearestNames("brkae", candidates), (Names{"brake"}));
    EXPECT_EQ(nearestNames("torque", candidates), Names());
}

TEST(NearestNames, ShortNamesMustNearlyAgree) {
    EXPECT_EQ(nearestNames("x", {"y", "X", "xy"}), (Names{"X"}));
    EXPECT_EQ(nearestNames("ab", {"ac", "cd"}), (Names{"ac"}));
}

TEST(NearestNames, AreListedInWords) {
    EXPECT_EQ(suggestion("form", {"from", "norm", "formula"}), "did you mean 'from' or 'norm'?");
    EXPECT_EQ(suggestion("x", {"speed"}), "");
    EXPECT_EQ(quotedList({"a"}), "'a'");
    EXPECT_EQ(quotedList({"a", "b", "c"}), "'a', 'b' and 'c'");
    EXPECT_EQ(quotedList({"a", "b", "c", "d"}, 3), "'a', 'b' and 2 more");
}

}  // namespace
}  // namespace vorm::evaluation
