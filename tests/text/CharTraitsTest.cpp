#include <gtest/gtest.h>
#include <lqtools/text/LqCharTraits.h>
TEST(CharTraits, Placeholder) { EXPECT_EQ(LqChar::Length("ab"), 2); }
