// The main of every test executable: scratch directory, then child tasks or the tests.
#include "tests/support/child.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

char const scratchVariable[] = "NX_TEST_SCRATCH";

// A child that a test starts inherits the variable and works in its parent's directory.
std::filesystem::path scratchEnter() {
    namespace fs = std::filesystem;
    if (char const* inherited = std::getenv(scratchVariable)) {
        fs::current_path(inherited);
        return {};
    }
    fs::path const base = fs::temp_directory_path();
    for (unsigned int n = nxProcessId();; ++n) {
        fs::path const dir = base / ("vx7test" + std::to_string(n));
        if (fs::create_directory(dir)) {
            nxEnvironmentSet(scratchVariable, dir.string().c_str());
            fs::current_path(dir);
            return dir;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    nxSelfSet(argv[0]);
    std::filesystem::path const scratch = scratchEnter();
    int result = 0;
    if (argc > 2 && std::string(argv[1]) == "--child") {
        result = nxChildRun(argv[2], argc - 3, argv + 3);
    } else {
        testing::InitGoogleTest(&argc, argv);
        testing::GTEST_FLAG(death_test_style) = "threadsafe";
        result = RUN_ALL_TESTS();
    }
    if (!scratch.empty()) {
        std::error_code ignored;
        std::filesystem::current_path(scratch.parent_path(), ignored);
        std::filesystem::remove_all(scratch, ignored);
    }
    return result;
}
