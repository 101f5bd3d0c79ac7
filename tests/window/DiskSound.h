#pragma once

#include "tests/support/Conversion.h"

#include <QTest>

namespace morlik::test
{

/// Lets sound go into a file as long as it lives; for players that are made later.
class DiskSound
{
public:
    DiskSound()
    {
        qputenv("SDL_AUDIODRIVER", "disk");
        qputenv("SDL_DISKAUDIOFILE", folder_.File("sound").c_str());
    }
    DiskSound(const DiskSound&) = delete;
    DiskSound& operator=(const DiskSound&) = delete;
    ~DiskSound() { qputenv("SDL_AUDIODRIVER", "dummy"); }

    /// What was played since the device was opened last, silence before and behind it
    /// too; nothing where none was opened.
    std::vector<std::int16_t> Values() const
    {
        if (!std::filesystem::exists(folder_.Path() / "sound"))
            return {};
        const auto bytes = ReadFile(folder_.File("sound"));
        std::vector<std::int16_t> values(bytes.size() / sizeof(std::int16_t));
        if (!values.empty())
            std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::int16_t));
        return values;
    }
    bool Holds(const std::vector<std::int16_t>& wanted) const
    {
        const auto values = Values();
        return std::search(values.begin(), values.end(), wanted.begin(), wanted.end()) !=
               values.end();
    }

private:
    TempFolder folder_;
};

template <class Condition>
void WaitUntil(Condition condition)
{
    EXPECT_TRUE(QTest::qWaitFor(condition, 20'000));
}

} // namespace morlik::test
