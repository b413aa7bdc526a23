// Runs a fuzz target without a fuzzer: on random bytes from a fixed seed, or on files.
//   PROGRAM RUNS [SEED]    PROGRAM FILES...
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    if (argc < 2) return 2;
    if (std::isdigit(static_cast<unsigned char>(*argv[1]))) {
        std::mt19937_64 random(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1);
        const long runs = std::strtol(argv[1], nullptr, 10);
        for (long i = 0; i < runs; ++i) {
            std::vector<std::uint8_t> bytes(random() % 64);
            for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
        std::printf("%ld runs\n", runs);
        return 0;
    }
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
