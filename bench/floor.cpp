// The floors of a conversion: each reads the level, inflates its streams and writes files of the
// same sizes, and does nothing else. `morlik-floor` is what comes to mind first: zlib, cleared
// buffers, the system's shared libraries. `morlik-floor-honest`, built with MORLIK_HONEST, has the
// conversion's library for the streams, its way to link and buffers that nothing clears, but takes
// memory in the pages that every program gets.
//
// usage: morlik-floor LEVEL OUTPUT_FOLDER (inflate=OFFSET,COMPRESSED,INFLATED | write=SIZE)...

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <zlib.h>

#ifdef MORLIK_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace
{

struct Buffer
{
    explicit Buffer(std::size_t size)
#ifdef MORLIK_HONEST
        : Bytes(std::make_unique_for_overwrite<char[]>(size)), // NOLINT(modernize-avoid-c-arrays)
#else
        : Bytes(std::make_unique<char[]>(size)), // NOLINT(modernize-avoid-c-arrays)
#endif
          Size(size)
    {
    }

    std::unique_ptr<char[]> Bytes; // NOLINT(modernize-avoid-c-arrays)
    std::size_t Size;
};

Buffer ReadAll(const char* path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    Buffer bytes(static_cast<std::size_t>(file.tellg()));
    file.seekg(0);
    file.read(bytes.Bytes.get(), static_cast<std::streamsize>(bytes.Size));
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
    libdeflate_zlib_decompress(inflater.get(), level.Bytes.get() + offset, compressed,
                               target.Bytes.get(), target.Size, nullptr);
#else
    uncompress(reinterpret_cast<Bytef*>(target.Bytes.get()), &inflated,
               reinterpret_cast<const Bytef*>(level.Bytes.get()) + offset, compressed);
#endif
}

void Write(const Buffer& level, const std::string& path, std::size_t size)
{
    std::ofstream file(path, std::ios::binary);
    for (std::size_t at = 0; at < size; at += level.Size)
        file.write(level.Bytes.get(),
                   static_cast<std::streamsize>(std::min(size - at, level.Size)));
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
