// Runs a fuzz target over the files of a folder, where no fuzzer is linked in.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nLength);

int main(int nArguments, char** ppszArguments)
{
    if (nArguments != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", ppszArguments[0]);
        return 2;
    }
    int nFiles = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ppszArguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string strBytes(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(strBytes.data()),
                               strBytes.size());
        ++nFiles;
    }
    std::printf("%d files\n", nFiles);
    return nFiles > 0 ? 0 : 1;
}
