// Runs a fuzz target over its seeds, without a fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> Content(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A copy of just that size, so that a sanitizer sees a read beyond its end.
void Run(std::vector<std::uint8_t> data) {
    data.shrink_to_fit();
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

/// Every seed also cut off, as a broken copy of a file is.
void Replay(const std::vector<std::uint8_t>& seed) {
    const std::size_t step = 1 + seed.size() / 50;
    for (std::size_t size = 0; size < seed.size(); size += step)
        Run({seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(size)});
    Run(seed);
}

} // namespace

int main(int argc, char** argv) {
    const std::filesystem::path folder = argc > 1 ? argv[1] : "";
    std::set<std::filesystem::path> seeds;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (entry.is_regular_file()) seeds.insert(entry.path());
    for (const auto& seed : seeds) {
        std::puts(seed.filename().c_str());
        std::fflush(stdout); // the last name is the one that ended it
        Replay(Content(seed));
    }
    if (seeds.empty()) std::fprintf(stderr, "No seeds in \"%s\".\n", folder.c_str());
    return seeds.empty() ? 1 : 0;
}
