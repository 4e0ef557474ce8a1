#include "workspace/gap_buffer.h"

#include "tests/support/random.h"

#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::Random;

std::vector<int> Elements(const GapBuffer<int>& buffer) {
    std::vector<int> elements;
    for (std::size_t i = 0; i < buffer.size(); ++i) {
        elements.push_back(buffer[i]);
    }
    return elements;
}

void Insert(GapBuffer<int>& buffer, std::size_t at, const std::vector<int>& elements) {
    buffer.Insert(at, elements);
}

TEST(GapBuffer, BeginsWithWhatItIsGiven) {
    EXPECT_EQ(GapBuffer<int>().size(), 0U);
    EXPECT_EQ(Elements(GapBuffer<int>({1, 2, 3})), (std::vector<int>{1, 2, 3}));
}

TEST(GapBuffer, InsertsAnywhere) {
    GapBuffer<int> buffer;
    Insert(buffer, 0, {5});
    Insert(buffer, 0, {1, 2});
    Insert(buffer, 3, {6});
    Insert(buffer, 2, {3, 4});
    Insert(buffer, 1, {});
    EXPECT_EQ(Elements(buffer), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(GapBuffer, ErasesAnywhere) {
    GapBuffer<int> buffer({1, 2, 3, 4, 5, 6});
    buffer.Erase(2, 2);
    EXPECT_EQ(Elements(buffer), (std::vector<int>{1, 2, 5, 6}));
    buffer.Erase(0, 1);
    buffer.Erase(2, 1);
    buffer.Erase(1, 0);
    EXPECT_EQ(Elements(buffer), (std::vector<int>{2, 5}));
    buffer.Erase(0, 2);
    EXPECT_EQ(buffer.size(), 0U);
    Insert(buffer, 0, {7});
    EXPECT_EQ(Elements(buffer), (std::vector<int>{7}));
}

TEST(GapBuffer, ElementsCanBeChangedOnBothSidesOfTheGap) {
    GapBuffer<int> buffer({1, 2, 3, 4});
    Insert(buffer, 2, {9});
    buffer[0] = 10;
    buffer[4] = 40;
    EXPECT_EQ(Elements(buffer), (std::vector<int>{10, 2, 9, 3, 40}));
}

TEST(GapBuffer, RandomEditsAreThoseOfAVector) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        Random random(seed);
        GapBuffer<int> buffer;
        std::vector<int> vector;
        for (int step = 0; step < 200; ++step) {
            const std::size_t at = random.Below(vector.size() + 1);
            const auto place = vector.begin() + static_cast<std::ptrdiff_t>(at);
            if (random.Chance(60)) {
                std::vector<int> added(random.Below(random.Chance(95) ? 4 : 100));
                for (int& element : added) {
                    element = static_cast<int>(random.Below(1000));
                }
                Insert(buffer, at, added);
                vector.insert(place, added.begin(), added.end());
            } else {
                const std::size_t count = random.Below(std::min<std::size_t>(vector.size() - at + 1, 8));
                buffer.Erase(at, count);
                vector.erase(place, place + static_cast<std::ptrdiff_t>(count));
            }
            ASSERT_EQ(Elements(buffer), vector) << "seed " << seed << ", step " << step;
        }
    }
}

}  // namespace
}  // namespace lintara::workspace
