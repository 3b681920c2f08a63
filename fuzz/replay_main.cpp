// The replay driver: in the ordinary build (no libFuzzer) each fuzz target links this
// main, which runs the target over every file of the folders it is given (the seed
// corpus and the regressions: each crash a fuzzer found, as its smallest input). The
// suite runs it so that every finding stays fixed, under the sanitizers too.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(argv[i]))
            if (entry.is_regular_file()) files.push_back(entry.path());
        if (files.empty()) {
            std::fprintf(stderr, "no inputs in %s\n", argv[i]);
            return 2;
        }
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files) {
            std::ifstream in(file, std::ios::binary);
            std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                    std::istreambuf_iterator<char>());
            std::fprintf(stderr, "%s\n", file.filename().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
            ++replayed;
        }
    }
    std::printf("replayed %d inputs\n", replayed);
    return 0;
}
