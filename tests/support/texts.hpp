#pragma once

#include <gtest/gtest.h>

#include <string>

/// A text has this part; the whole text is told when it has not.
#define EXPECT_HAS(text, part) EXPECT_NE((text).find(part), std::string::npos) << (text)
