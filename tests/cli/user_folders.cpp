// The folders of whoever runs the tests have no say in them, and nothing is written there: this program, and
// all that it starts, finds empty ones.
#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

class EmptyUserFolders : public testing::Environment {
  public:
    void SetUp() override {
        folder_.emplace();
        Give("HOME", "home");
        Give("XDG_CONFIG_HOME", "config");
        Give("XDG_STATE_HOME", "state");
        Give("XDG_DATA_HOME", "data");
        Give("XDG_CACHE_HOME", "cache");
    }
    void TearDown() override { folder_.reset(); }

  private:
    void Give(const char* variable, const char* name) const {
        const std::filesystem::path path = *folder_ / name;
        std::filesystem::create_directories(path);
        ::setenv(variable, path.c_str(), 1);
    }

    std::optional<support::TemporaryFolder> folder_;
};

// The framework owns it.
[[maybe_unused]] const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new EmptyUserFolders);

}  // namespace
}  // namespace lintara::cli
