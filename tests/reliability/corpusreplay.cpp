// Feeds every file of a fuzzing corpus to its target's entry point, the way the fuzzer does, so
// that the ordinary build (and its sanitizer build) checks every input ever kept, crashes found
// earlier included.
//   tst_corpusreplay_<target> <corpus folder>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    const std::filesystem::path folder(argv[1]);
    std::error_code error;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    if (error) {
        std::fprintf(stderr, "cannot read the corpus %s: %s\n", argv[1], error.message().c_str());
        return 1;
    }
    // An empty corpus replays nothing and would pass without checking anything.
    if (files.empty()) {
        std::fprintf(stderr, "the corpus %s holds no input\n", argv[1]);
        return 1;
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        std::ifstream in(file, std::ios::binary);
        const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                      std::istreambuf_iterator<char>());
        if (!in.eof() && in.fail()) {
            std::fprintf(stderr, "cannot read %s\n", file.c_str());
            return 1;
        }
        // A copy of exactly the input's size, so that reading past it is caught.
        std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
        std::fprintf(stderr, "replay %s (%zu bytes)\n", file.filename().c_str(), data.size());
        LLVMFuzzerTestOneInput(data.empty() ? nullptr : data.data(), data.size());
    }
    std::printf("replayed %zu inputs of %s\n", files.size(), argv[1]);
    return 0;
}
