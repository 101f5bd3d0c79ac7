#include "system/FileCalls.h"

#include <algorithm>
#include <windows.h>

namespace morlik
{

namespace
{

std::error_code LastError()
{
    return {static_cast<int>(GetLastError()), std::system_category()};
}

class Win32HeldFile : public HeldFile
{
public:
    Win32HeldFile(HANDLE handle, std::filesystem::path path)
        : handle_(handle), path_(std::move(path))
    {
    }
    Win32HeldFile(const Win32HeldFile&) = delete;
    Win32HeldFile& operator=(const Win32HeldFile&) = delete;
    ~Win32HeldFile() override
    {
        CloseHandle(handle_);
        if (removed_)
            DeleteFileW(path_.c_str());
    }

    std::string Note() const override
    {
        constexpr LONGLONG kMostBytes = LONGLONG{1} << 20;
        LARGE_INTEGER size = {};
        if (GetFileSizeEx(handle_, &size) == 0 || size.QuadPart <= 0)
            return {};
        std::string note(static_cast<std::size_t>(std::min(size.QuadPart, kMostBytes)), '\0');
        DWORD read = 0;
        SetFilePointer(handle_, 0, nullptr, FILE_BEGIN);
        if (ReadFile(handle_, note.data(), static_cast<DWORD>(note.size()), &read, nullptr) == 0)
            read = 0;
        note.resize(read);
        return note;
    }

    std::error_code SetNote(std::string_view note) override
    {
        DWORD written = 0;
        SetFilePointer(handle_, 0, nullptr, FILE_BEGIN);
        return WriteFile(handle_, note.data(), static_cast<DWORD>(note.size()), &written,
                         nullptr) != 0
                   ? std::error_code()
                   : LastError();
    }

    /// A file that is open can't be removed here: it goes with the object.
    void Remove() override { removed_ = true; }

private:
    HANDLE handle_;
    std::filesystem::path path_;
    bool removed_ = false;
};

} // namespace

std::error_code TakePlace(const std::filesystem::path& fresh, const std::filesystem::path& place)
{
    // Programs that look at every new file, against viruses or for a search, have it open for a
    // moment.
    constexpr DWORD kMilliseconds = 25;
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(fresh.c_str(), place.c_str(), MOVEFILE_REPLACE_EXISTING) != 0)
            return {};
        const auto fault = LastError();
        const bool mayPass =
            fault.value() == ERROR_SHARING_VIOLATION || fault.value() == ERROR_ACCESS_DENIED;
        if (!mayPass || attempt == 10)
            return fault;
        Sleep(kMilliseconds);
    }
}

std::uint64_t FileNumber(const std::filesystem::path& /*path*/)
{
    return 0;
}

std::error_code MayWrite(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    const bool readOnly =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly)
        return make_error_code(std::errc::permission_denied);
    // To replace a file means to delete it, which a program that has it open may not share.
    const HANDLE handle =
        CreateFileW(path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle != INVALID_HANDLE_VALUE) {
        CloseHandle(handle);
        return {};
    }
    switch (GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return {};
    case ERROR_SHARING_VIOLATION:
        return make_error_code(std::errc::text_file_busy);
    default:
        return LastError();
    }
}

std::error_code MakeHiddenFolder(const std::filesystem::path& folder)
{
    if (CreateDirectoryW(folder.c_str(), nullptr) != 0) {
        SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_HIDDEN);
        return {};
    }
    const auto fault = LastError();
    if (fault.value() != ERROR_ALREADY_EXISTS)
        return fault;
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES &&
                          (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                          (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
    return isFolder ? std::error_code() : make_error_code(std::errc::not_a_directory);
}

std::filesystem::path FoldedName(const std::filesystem::path& name)
{
    const std::wstring& text = name.native();
    std::wstring folded(text.size(), L'\0');
    const int size = LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, text.data(),
                                   static_cast<int>(text.size()), folded.data(),
                                   static_cast<int>(folded.size()), nullptr, nullptr, 0);
    return size == static_cast<int>(text.size()) ? std::filesystem::path(folded) : name;
}

bool IsStream(std::string_view path)
{
    const std::string name(path);
    return lstrcmpiA(name.c_str(), "NUL") == 0 || lstrcmpiA(name.c_str(), "CON") == 0;
}

std::unique_ptr<HeldFile> HeldFile::Hold(const std::filesystem::path& path, std::error_code& error)
{
    // Shared with nobody.
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    error = {};
    if (handle != INVALID_HANDLE_VALUE)
        return std::make_unique<Win32HeldFile>(handle, path);
    error = GetLastError() == ERROR_SHARING_VIOLATION
                ? make_error_code(std::errc::device_or_resource_busy)
                : LastError();
    return nullptr;
}

} // namespace morlik
