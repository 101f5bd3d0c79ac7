#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace morlik
{

static_assert(std::endian::native == std::endian::little,
              "Arrays of a file are copied as they stand: the formats are little-endian.");

/// A value that can stand in a file as its bytes.
template <class T>
concept Packed = std::is_trivially_copyable_v<T>;

/// Input that ends too early or holds a count that cannot be true.
/// Caught at the public function of the reader at hand, which turns it into its message;
/// `what()` is the line for the log: section, file offset, bytes wanted and bytes left.
class ReadFailure : public std::runtime_error
{
public:
    explicit ReadFailure(const std::string& detail) : std::runtime_error(detail) {}
};

/// Forward reader over bytes in memory. Every access is checked against the end, and a count
/// against the bytes that are left, before anything is allocated. All failures are `ReadFailure`.
class ByteReader
{
public:
    explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    /// Names what is read from here on, for the detail of a failure. Keeps the pointer.
    void Section(const char* name) { section_ = name; }

    std::size_t Position() const { return position_; }
    std::size_t Left() const { return bytes_.size() - position_; }

    /// Moves to an offset from the start of the bytes.
    void Seek(std::size_t position);
    /// The same, but a place behind the end stands for the end.
    void SeekUpTo(std::size_t position);

    /// The next `size` bytes as a view into the source.
    std::span<const std::byte> Take(std::size_t size)
    {
        if (size > Left())
            FailShort(size);
        const auto taken = bytes_.subspan(position_, size);
        position_ += size;
        return taken;
    }

    /// Bytes of a table of `count` records of `size` bytes each, as a view. A negative count fails.
    std::span<const std::byte> TakeTable(std::int64_t count, std::size_t size);

    void Skip(std::size_t size) { Take(size); }
    void SkipTable(std::int64_t count, std::size_t size) { TakeTable(count, size); }

    /// One little-endian value.
    template <Packed T>
    T Read()
    {
        T value;
        std::memcpy(&value, Take(sizeof(T)).data(), sizeof(T));
        return value;
    }

    /// `count` records in one copy; a negative count, or one larger than what is left, fails.
    template <Packed T>
    std::vector<T> Table(std::int64_t count)
    {
        const auto source = TakeTable(count, sizeof(T));
        std::vector<T> table(static_cast<std::size_t>(count));
        if (!source.empty())
            std::memcpy(table.data(), source.data(), source.size());
        return table;
    }

    /// Fails with a text of its own, for a value that the format does not allow here.
    [[noreturn]] void Fail(const std::string& why) const;

private:
    [[noreturn]] void FailShort(std::size_t wanted) const;

    std::span<const std::byte> bytes_;
    std::size_t position_ = 0;
    const char* section_ = "file";
};

/// Where little-endian bytes go: a buffer in memory or a file.
class ByteSink
{
public:
    virtual ~ByteSink() = default;
    virtual void PutBytes(std::span<const std::byte> bytes) = 0;

    template <Packed T>
    void Put(const T& value)
    {
        PutBytes(std::as_bytes(std::span(&value, 1)));
    }

    /// All records of a table, without its count.
    template <Packed T>
    void PutTable(const std::vector<T>& table)
    {
        PutBytes(std::as_bytes(std::span(table)));
    }

protected:
    ByteSink() = default;
    ByteSink(const ByteSink&) = default;
    ByteSink(ByteSink&&) = default;
    ByteSink& operator=(const ByteSink&) = default;
    ByteSink& operator=(ByteSink&&) = default;
};

/// Gathers bytes in memory.
class ByteWriter : public ByteSink
{
public:
    void PutBytes(std::span<const std::byte> bytes) override
    {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    }
    void Reserve(std::size_t count) { bytes_.reserve(count); }
    void PutZeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

    std::size_t Size() const { return bytes_.size(); }
    const std::vector<std::byte>& Bytes() const { return bytes_; }

private:
    std::vector<std::byte> bytes_;
};

} // namespace morlik
