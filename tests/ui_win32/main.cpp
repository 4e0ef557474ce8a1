// The tests or, with "--pictures=FOLDER", pictures of the windows.
#include "tests/ui_win32/pictures.h"

#include <cstdio>
#include <string_view>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    constexpr std::string_view option = "--pictures=";
    if (argc > 1 && std::string_view(argv[1]).starts_with(option)) {
        const int taken = lintara::ui::win32::TakePictures(argv[1] + option.size());
        std::printf("%d pictures\n", taken);
        return taken == 5 ? 0 : 1;
    }
    return RUN_ALL_TESTS();
}
