#include "side/PRJ_Mod.h"

#include "base/Files.h"
#include "base/Narrow.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace morlik
{

namespace
{

constexpr std::string_view kProjectSignature = "PROJFILE";

constexpr std::int16_t kEmptySlot = 1;
constexpr std::int16_t kRoomState = -1;

/// From here on unknown objects mean that the reading is out of step: no user wants to answer a
/// message for each of thousands.
constexpr std::int32_t kMostUnknown = 20;

/// Rooms are numbered by signed words, so no project has more slots than that.
constexpr std::int32_t kMostSlots = std::numeric_limits<std::int16_t>::max();

constexpr std::size_t kWord = 2;  ///< bytes of a 16-bit value
constexpr std::size_t kDword = 4; ///< bytes of a 32-bit value

constexpr std::size_t kNameBytes = 80;
constexpr std::size_t kItemBytes = 42;
constexpr std::size_t kTableBytes = (2 + 2000 + 1 + 768 + 1 + 512) * kDword;
constexpr std::size_t kTrailBytes = 8;

/// The two types of objects, and what the long type adds.
constexpr std::int16_t kPlainObject = 8;
constexpr std::int16_t kLongObject = 0x10;
constexpr std::size_t kLongObjectRest = 5 * kWord;

/// What differs between the projects of the first editor and those of its later versions.
struct PRJLayout
{
    std::size_t ObjectBody; ///< bytes behind the type word that all objects have
    std::size_t BlockBytes;
    bool HasType4800; ///< a further type of second objects
};
constexpr PRJLayout kFirstLayout{32, 148, false};
constexpr PRJLayout kLaterLayout{40, 140, true};
/// The least version that is known to have the later layout.
constexpr std::int32_t kFirstLaterVersion = 49;

/// Bytes behind the type word of a second object; nothing for a type that is not known.
std::optional<std::size_t> Object2Body(std::int16_t type, const PRJLayout& layout)
{
    switch (type) {
    case 0x4000:
    case 0x4020:
    case 0x4100:
    case 0x4200:
    case 0x5000:
    case 0x6000:
        return 18 + 22 + 30;
    case 0x4040:
    case 0x4080:
    case 0x4864:
    case 0x4400:
    case 0x4c00:
        return 40;
    case 0x4800:
        return layout.HasType4800 ? std::optional<std::size_t>(40) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::string ReadText(ByteReader& reader, std::size_t size)
{
    const auto bytes = reader.Take(size);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The count of a list and the words that follow it, one for each entry.
std::int16_t ReadListHead(ByteReader& reader)
{
    const auto count = std::max<std::int16_t>(reader.Read<std::int16_t>(), 0);
    reader.SkipTable(count, kWord);
    return count;
}

/// One reading of a project, section by section in file order.
class PRJReading
{
public:
    /// An unknown type of object gets a message of `report`, or, where that is null, ends the
    /// reading as damage does.
    PRJReading(ByteReader& reader, const PRJLayout& layout, Reporter* report)
        : reader_(reader), layout_(layout), report_(report)
    {
    }

    PRJData Read()
    {
        project_.Signature = ReadText(reader_, kProjectSignature.size());
        project_.Version = reader_.Read<std::int32_t>();
        ReadRooms();
        ReadTail();
        return std::move(project_);
    }

private:
    void ReadRooms()
    {
        reader_.Section("room slots");
        project_.NumRoomSlots = reader_.Read<std::int32_t>();
        if (project_.NumRoomSlots < 1 || project_.NumRoomSlots > kMostSlots)
            reader_.Fail("a number of slots of " + std::to_string(project_.NumRoomSlots));
        project_.Rooms.resize(static_cast<std::size_t>(project_.NumRoomSlots));
        for (PRJRoom& room : project_.Rooms)
            if (reader_.Read<std::int16_t>() != kEmptySlot)
                ReadRoom(room);
    }

    void ReadTail()
    {
        reader_.Section("tables");
        reader_.Skip(kTableBytes);
        reader_.Section("texture file");
        project_.TextureFile = ReadPRJString(reader_);
        reader_.Section("trail records");
        project_.NumTrailRecords = reader_.Read<std::int16_t>();
        reader_.SkipTable(std::max<std::int16_t>(project_.NumTrailRecords, 0), kTrailBytes);
    }

    void ReadRoom(PRJRoom& room)
    {
        reader_.Section("room");
        room.Name = ReadText(reader_, kNameBytes);
        room.State = kRoomState;
        room.Index = Word(project_.NumRooms++);
        reader_.Skip(3 * kDword + 5 * kWord);
        room.BlockColumns = reader_.Read<std::int16_t>();
        room.BlockRows = reader_.Read<std::int16_t>();
        reader_.Skip(3 * kWord);
        reader_.SkipTable(ReadListHead(reader_), kItemBytes);
        reader_.Section("objects");
        ReadObjects(room.ObjectTypes);
        reader_.Skip(kDword);
        reader_.Section("second objects");
        ReadObjects2(room.Object2Types);
        reader_.Section("blocks");
        reader_.Skip(2 * kWord + 3 + kWord);
        SkipBlocks(room);
    }

    void ReadObjects(std::vector<std::int16_t>& types)
    {
        for (auto left = ReadListHead(reader_); left > 0; --left) {
            const auto type = reader_.Read<std::int16_t>();
            types.push_back(type);
            reader_.Skip(layout_.ObjectBody);
            if (type == kLongObject)
                reader_.Skip(kLongObjectRest);
            else if (type != kPlainObject)
                TellUnknown("Unknown object found -" + std::to_string(type));
        }
    }

    void ReadObjects2(std::vector<std::int16_t>& types)
    {
        for (auto left = ReadListHead(reader_); left > 0; --left) {
            const auto type = reader_.Read<std::int16_t>();
            types.push_back(type);
            if (const auto body = Object2Body(type, layout_))
                reader_.Skip(*body);
            else
                TellUnknown("Unknown object2 -" + std::to_string(type));
        }
    }

    void TellUnknown(const std::string& message)
    {
        if (report_ == nullptr || ++unknown_ > kMostUnknown)
            reader_.Fail(message);
        report_->Message(message);
    }

    void SkipBlocks(const PRJRoom& room)
    {
        if (room.BlockColumns < 0 || room.BlockRows < 0)
            reader_.Fail(std::to_string(room.BlockColumns) + " by " +
                         std::to_string(room.BlockRows) + " blocks");
        reader_.SkipTable(std::int64_t{room.BlockColumns} * room.BlockRows, layout_.BlockBytes);
    }

    ByteReader& reader_;
    const PRJLayout& layout_;
    Reporter* report_;
    std::int32_t unknown_ = 0; ///< objects of unknown types so far
    PRJData project_;
};

/// The project in `layout`, if it can be read to its end without a doubt.
std::optional<PRJData> ReadAs(const PRJLayout& layout, std::span<const std::byte> bytes)
{
    try {
        ByteReader reader(bytes);
        return PRJReading(reader, layout, nullptr).Read();
    } catch (const ReadFailure&) {
        return std::nullopt;
    }
}

/// The layout that the version names. It is no more than a hint: the versions of the first editors
/// tell little.
const PRJLayout& LayoutByVersion(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    reader.Skip(kProjectSignature.size());
    return reader.Read<std::int32_t>() >= kFirstLaterVersion ? kLaterLayout : kFirstLayout;
}

bool HasSignature(std::span<const std::byte> bytes)
{
    return bytes.size() >= kProjectSignature.size() &&
           std::memcmp(bytes.data(), kProjectSignature.data(), kProjectSignature.size()) == 0;
}

std::optional<FileBytes> LoadFile(const std::string& fileName, Reporter& report)
{
    try {
        return FileBytes::Load(fileName);
    } catch (const FileFailure& failure) {
        report.Message(failure.what());
    }
    return std::nullopt;
}

} // namespace

PRJData ReadPRJ(const std::string& fileName, std::int16_t& levelIsLoaded, Reporter& report)
{
    const MessageScope messages(report);
    const auto file = LoadFile(fileName, report);
    if (!file)
        return {};
    if (!HasSignature(file->Bytes())) {
        report.Message("Not a project file!");
        return {};
    }
    levelIsLoaded = 0;
    // No field tells the layout for sure: the one that leads to the end of the file is the right
    // one. Where none does, what is wrong is told in the layout of the version.
    for (const PRJLayout& layout : {kFirstLayout, kLaterLayout})
        if (auto project = ReadAs(layout, file->Bytes()))
            return std::move(*project);
    try {
        ByteReader reader(file->Bytes());
        return PRJReading(reader, LayoutByVersion(file->Bytes()), &report).Read();
    } catch (const ReadFailure& failure) {
        report.Message("ReadPRJ -> Error reading PRJ file!", kAppTitle, failure.what());
        return {};
    }
}

std::string ReadPRJString(ByteReader& reader)
{
    std::string text;
    for (char c = reader.Read<char>(); c != ' '; c = reader.Read<char>())
        text += c;
    return text;
}

} // namespace morlik
