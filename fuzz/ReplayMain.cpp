// Runs a fuzz target over each file of the given folders. Fails if there are none, so that a lost corpus is
// noticed.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Replay(const std::filesystem::path& path) {
    std::printf("%s\n", path.c_str()); // the last line printed names the failing input
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            Replay(entry.path());
            ++replayed;
        }
    }
    std::printf("%d inputs\n", replayed);
    return replayed == 0 ? 1 : 0;
}
