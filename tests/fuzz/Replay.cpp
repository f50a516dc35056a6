// Runs the target it is linked with over every file of a corpus folder, as the ordinary tests do.
#include "FuzzTarget.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    int replayed = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(argc > 1 ? argv[1] : "", error)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        // Said beforehand, so that the last line of a crash names its file.
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);
        // A copy of exactly its size, so that reading past it is seen.
        const std::vector<uint8_t> data(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(data.data(), data.size());
        ++replayed;
    }
    if (replayed == 0) std::fprintf(stderr, "no corpus: give its folder\n");
    return replayed == 0;
}
