#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Runs the fuzz target once for each file of a directory. A failed check aborts the program.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: replay DIRECTORY\n", stderr);
        return 2;
    }
    int count = 0;
    // Absolute paths, because a target may change the working directory.
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::absolute(argv[1]))) {
        std::printf("%s\n", entry.path().filename().c_str());
        std::fflush(stdout);
        std::ifstream file(entry.path(), std::ios::binary);
        if (!file)
            return 1;
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
