#include "shell/ObjectID_Mod.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

using Counts = std::array<std::int32_t, 6>;

/// The ends of the alphabets, signs beside them, and two small letters without a capital.
constexpr const char* kLetters = "`az{\xdf\xe0\xf6\xf7\xf8\xfe\xff";
constexpr const char* kCapitals = "`AZ{\xdf\xc0\xd6\xf7\xd8\xde\xff";

/// A catalogue whose sections have so many entries. Each is called "n" + section + "-" + id + the
/// letters, but those of id 1, which have no name.
std::vector<std::byte> Catalogue(const Counts& counts)
{
    ByteWriter out;
    for (std::size_t section = 0; section < counts.size(); ++section) {
        out.Put(counts.at(section));
        for (std::int32_t id = 0; id < counts.at(section); ++id) {
            // Not one sum: g++ 12 at -O3 sees strings overlap where a temporary is added to "n".
            std::string name = id == 1 ? "" : "n";
            if (id != 1)
                name += std::to_string(section) + "-" + std::to_string(id) + kLetters;
            out.Put(static_cast<std::int32_t>(name.size()));
            out.PutBytes(std::as_bytes(std::span(name)));
            if (section >= 2)
                out.Put(std::int32_t{-1});
        }
    }
    return out.Bytes();
}

std::string LoadEnd(Conversion& run, const std::vector<std::byte>& catalogue)
{
    run.Folder.Write(kCatalogueName, catalogue);
    return EndOf([&run] { LoadObjectIDs("", run.Program.Names, run.Program.Report); });
}

TEST(LoadObjectIDs, FillsTheTablesInTheOrderOfTheFile)
{
    Conversion run;
    ASSERT_EQ(LoadEnd(run, Catalogue({501, 90, 501, 501, 501, 501})), "");
    const ObjectNames& names = run.Program.Names;
    const std::string letters = kLetters;
    EXPECT_EQ(names.Moveable(kTR4, 500), "n0-500" + letters);
    EXPECT_EQ(names.Static(89), "n1-89" + letters);
    EXPECT_EQ(names.Moveable(kTR3, 500), std::string("N2-500") + kCapitals);
    EXPECT_EQ(names.Moveable(kTR2, 500), "n3-500" + letters);
    EXPECT_EQ(names.Moveable(kTR1, 2), "n4-2" + letters);
    EXPECT_EQ(names.Moveable(kTR5, 0), "n5-0" + letters);
    for (const std::string& none : {names.Moveable(kTR5, 1), names.Moveable(kTR5, 501),
                                    names.Moveable(kTR1, -1), names.Static(90)})
        EXPECT_EQ(none, "");
}

TEST(LoadObjectIDs, EndsTheProgramWithoutAGoodCatalogue)
{
    Conversion run;
    run.OpenLog();
    EXPECT_EQ(LoadEnd(run, Catalogue({})), "");
    const std::string error = "Error reading TR4Objects.dat";
    for (std::size_t section = 0; section < 6; ++section) {
        Counts counts{};
        counts.at(section) = section == 1 ? 91 : 502;
        EXPECT_EQ(LoadEnd(run, Catalogue(counts)), error) << section;
    }
    const auto good = Catalogue({3, 2, 1, 2, 1, 3});
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_EQ(LoadEnd(run, {good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)}),
                  error)
            << size;
    EXPECT_TRUE(run.LogLines().back().starts_with("object names, offset "));
    EXPECT_EQ(run.Host.Messages().back(), "MORLIK error: " + error);
    std::filesystem::remove(run.Folder.File(kCatalogueName));
    EXPECT_EQ(EndOf([&] { LoadObjectIDs("", run.Program.Names, run.Program.Report); }),
              "LoadObjectIDs -> Can't find TR4Objects.dat");
}

} // namespace

} // namespace morlik::test
