// Environment strings and the current directory.
#include "general/finfo/env.h"

#include <filesystem>

#include "tests/support/child.h"
#include "tests/support/support.h"

TEST(Env, Variables) {
    std::string const longName(255, 'N');
    nxEnvironmentSet("NX_ENV_A", "value of a");
    nxEnvironmentSet("NX_ENV_B", "b");
    nxEnvironmentSet(longName.c_str(), "long");
    NX_EnvString text("NX_ENV_A");
    NX_EnvString const copy(text);
    text = "NX_ENV_B";
    EXPECT_STREQ(text.dataPConst(), "b");
    nxEnvironmentSet("b", std::string(500, '5').c_str());
    text = text.dataPConst(); // its own text is the name, and gives way to the value
    EXPECT_EQ(text.strLen(), 500u);
    text = "NX_ENV_NONE";
    EXPECT_EQ(text.strLen(), 0u);
    EXPECT_STREQ(copy.dataPConst(), "value of a");
    NX_StringA const name((longName + "NNN").c_str());
    EXPECT_STREQ(NX_EnvString(name(0)).dataPConst(), "long"); // cut to 255 characters
    EXPECT_STREQ(NxEnvOrDefault("NX_ENV_B", "fallback"), "b");
    EXPECT_STREQ(NxEnvOrDefault("NX_ENV_NONE", "fallback"), "fallback");
}

TEST(Env, CurrentDirectory) {
    NX_DirCurrent const dir;
    EXPECT_EQ(std::filesystem::path(dir.dataPConst()), std::filesystem::current_path());
    EXPECT_EQ(dir.subCollP(), nullptr);
}
