#include "tests/support/support.h"

#include <cstdio>
#include <fstream>
#include <iterator>

std::string nxFileContent(char const* name) {
    std::ifstream in(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void nxFileMake(char const* name, std::string const& content) {
    std::ofstream out(name, std::ios::binary | std::ios::trunc);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    ASSERT_TRUE(out.good()) << name;
}

void nxLogErase() {
    std::remove("quorix.log");
}

bool nxLogHasAssertion(char const* file, char const* expression) {
    std::string const log = nxFileContent("quorix.log");
    std::string const head = std::string("Assert fail: ") + file + " ";
    std::size_t const at = log.find(head);
    return at != std::string::npos && log.find(std::string(" : ") + expression, at) != std::string::npos;
}

bool nxLogHasError(int number) {
    std::string const word = "E=" + std::to_string(number & 0x7FF);
    return nxFileContent("quorix.log").find(word) != std::string::npos;
}
