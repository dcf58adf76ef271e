// Tokens: stable while their object lives, nothing afterwards, and never something else.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <unordered_set>
#include <vector>

#include "memory/tokens.h"

namespace toolbox {
namespace {

struct Object {
  Reference reference;
  Token token(Kind kind = Kind::kTrack) { return reference.token(kind, this); }
};

TEST(Tokens, LeadToTheirObjectWhileItLives) {
  const uint32_t before = tokens::live_count();
  Token token = 0;
  {
    Object object;
    EXPECT_EQ(before, tokens::live_count());
    token = object.token();
    EXPECT_NE(0u, token);
    EXPECT_EQ(token, object.token());
    EXPECT_EQ(before + 1, tokens::live_count());
    EXPECT_EQ(&object, tokens::find(Kind::kTrack, token));
    EXPECT_EQ(nullptr, tokens::find(Kind::kMovie, token));
    EXPECT_EQ(nullptr, tokens::find(Kind::kNone, token));
    EXPECT_EQ(nullptr, tokens::find(Kind::kTrack, token | uint64_t{1} << 32));
  }
  EXPECT_EQ(nullptr, tokens::find(Kind::kTrack, token));
  EXPECT_EQ(before, tokens::live_count());
}

TEST(Tokens, MadeUpNumbersAreNothing) {
  std::vector<std::unique_ptr<Object>> objects;
  std::unordered_set<uint64_t> live;
  for (int i = 0; i < 100; ++i) {
    objects.push_back(std::make_unique<Object>());
    live.insert(objects.back()->token());
  }
  for (uint64_t number = 0; number < 10'000; ++number)
    EXPECT_EQ(nullptr, tokens::find(Kind::kTrack, number));
  std::mt19937_64 random(1);
  for (int i = 0; i < 200'000; ++i) {
    const uint64_t number = i % 2 == 0 ? random() : random() & UINT32_MAX;
    EXPECT_EQ(live.count(number) != 0, tokens::find(Kind::kTrack, number) != nullptr);
  }
}

TEST(Tokens, DoNotComeBackToLife) {
  std::unordered_set<Token> seen;
  for (int i = 0; i < 500'000; ++i) {
    Object object;
    ASSERT_TRUE(seen.insert(object.token()).second) << "after " << i;
  }
}

}  // namespace
}  // namespace toolbox
