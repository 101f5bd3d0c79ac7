// Feeds damaged levels to a whole conversion: whatever the bytes are, it ends in an object set or a
// message. The first byte chooses the ending of the file's name, which decides between games.

#include "base/Files.h"
#include "platform/ConsoleHost.h"
#include "shell/Session.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <sstream>

namespace
{

constexpr std::array<const char*, 4> kEndings{".phd", ".tub", ".tr4", ".trc"};

const std::string& Folder()
{
    static const std::string folder = [] {
        const auto path = std::filesystem::temp_directory_path() / "morlik-fuzz";
        std::filesystem::create_directories(path);
        return path.string();
    }();
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string level = Folder() + "/level" + kEndings[data[0] % kEndings.size()];
    morlik::WriteWholeFile(level, std::as_bytes(std::span(data, size).subspan(1)));
    std::ostringstream messages;
    morlik::ConsoleHost host(messages,
                             {.MainSFX = level, .UpdateHorizon = true, .ExportSprites = true});
    morlik::Session session(host);
    try {
        morlik::LoadLevel(session, level);
        morlik::SaveLevel(session, Folder() + "/set.was");
    } catch (const morlik::ProgramEnd&) {
        return 0;
    }
    return 0;
}
