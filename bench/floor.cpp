// The floors of a conversion: each reads the level, inflates its streams and writes files of the
// same sizes, and does nothing else. `morlik-floor` is what comes to mind first: zlib, vectors, the
// system's shared libraries. `morlik-floor-honest`, built with MORLIK_HONEST, has all that makes
// the conversion fast: its library for the streams, buffers that nothing clears, its way to link.
// usage: morlik-floor LEVEL OUTPUT_FOLDER (inflate=OFFSET,COMPRESSED,INFLATED | write=SIZE)...

#include "base/Uninitialised.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>
#include <zlib.h>

#ifdef MORLIK_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace
{

#ifdef MORLIK_HONEST
using Buffer = morlik::UninitialisedVector<char>;
#else
using Buffer = std::vector<char>;
#endif

Buffer ReadAll(const char* path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    Buffer bytes(static_cast<std::size_t>(file.tellg()));
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void Inflate(const Buffer& level, const char* numbers)
{
    unsigned long offset = 0;
    unsigned long compressed = 0;
    unsigned long inflated = 0;
    if (std::sscanf(numbers, "%lu,%lu,%lu", &offset, &compressed, &inflated) != 3) // NOLINT
        return;
    Buffer target(inflated);
#ifdef MORLIK_LIBDEFLATE
    using Inflater = std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)>;
    const Inflater inflater(libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    libdeflate_zlib_decompress(inflater.get(), level.data() + offset, compressed, target.data(),
                               target.size(), nullptr);
#else
    uncompress(reinterpret_cast<Bytef*>(target.data()), &inflated,
               reinterpret_cast<const Bytef*>(level.data()) + offset, compressed);
#endif
}

void Write(const Buffer& level, const std::string& path, std::size_t size)
{
    std::ofstream file(path, std::ios::binary);
    for (std::size_t at = 0; at < size; at += level.size())
        file.write(level.data(), static_cast<std::streamsize>(std::min(size - at, level.size())));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return EXIT_FAILURE;
    const auto level = ReadAll(argv[1]);
    for (int i = 3; i < argc; ++i) {
        const std::string step = argv[i];
        if (step.rfind("inflate=", 0) == 0)
            Inflate(level, argv[i] + 8);
        else
            Write(level, std::string(argv[2]) + "/" + std::to_string(i),
                  std::strtoul(argv[i] + 6, nullptr, 10));
    }
    return EXIT_SUCCESS;
}
