// Runs tests the way a program does that lets its user's locale hold everywhere: nothing that is tested may
// depend on it, but the regional texts.
#include <locale>
#include <stdexcept>

#include <gtest/gtest.h>

namespace {

void AdoptLocaleOfEnvironment() {
    try {
        std::locale::global(std::locale(""));
    } catch (const std::runtime_error&) {
        // The environment names one that is not installed: the classic one stays.
    }
}

}  // namespace

int main(int argc, char** argv) {
    AdoptLocaleOfEnvironment();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
