#include "base/FileGroup.h"
#include "base/OutputFile.h"
#include "system/FileCalls.h"

namespace morlik
{

namespace
{

/// How long the second writer of a file waits for the first one.
constexpr std::chrono::seconds kPatience(10);

} // namespace

NewFile::NewFile(const std::string& path, PhaseTimes* times)
    : group_(IsStream(path) ? nullptr
                            : (CheckPlace(path), std::make_unique<FileGroup>(path, kPatience))),
      file_(group_ ? group_->DraftOf(path) : path, path, times)
{
}

NewFile::~NewFile() = default;

void NewFile::TakePlace()
{
    file_.Close();
    if (group_)
        group_->TakePlaces();
}

void WriteWholeFile(const std::string& path, std::span<const std::byte> bytes)
{
    NewFile file(path);
    file.File().PutBytes(bytes);
    file.TakePlace();
}

} // namespace morlik
