#include <gtest/gtest.h>

#include "kiv/path.h"

using namespace Kiv_v4;

TEST(Path, TakenApartAndPutTogetherAgainIsTheSame)
{
    const Path path({PathSegment("/a", 1, '/'), PathSegment(":b:c", 2, ':')});
    EXPECT_EQ(path.pop() + path.back(), path);
    EXPECT_EQ(path.popSegment() + path.getSegments().back(), path);
}
