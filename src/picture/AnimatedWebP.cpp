#include "base/OutputFile.h"
#include "picture/MovingFile.h"

#ifdef MORLIK_WEBP
#include <webp/encode.h>
#include <webp/mux.h>
#endif

namespace morlik
{

#ifdef MORLIK_WEBP

namespace
{

/// A picture of the library, which frees itself.
struct WebPRows : WebPPicture
{
    WebPRows() : WebPPicture() { WebPPictureInit(this); }
    WebPRows(const WebPRows&) = delete;
    WebPRows& operator=(const WebPRows&) = delete;
    ~WebPRows() { WebPPictureFree(this); }
};

struct FreeEncoder
{
    void operator()(WebPAnimEncoder* encoder) const { WebPAnimEncoderDelete(encoder); }
};

class AnimatedWebP : public MovingFile
{
public:
    AnimatedWebP(const std::string& path, std::size_t count)
        : path_(path), file_(path), count_(count)
    {
    }

    void Add(const Picture& picture) override
    {
        if (number_ == 0)
            Begin(picture);
        WebPRows rows;
        rows.use_argb = 1;
        rows.width = picture.Width;
        rows.height = picture.Height;
        Expect(WebPPictureImportRGBA(&rows,
                                     reinterpret_cast<const std::uint8_t*>(picture.Pixels.data()),
                                     picture.Width * static_cast<int>(sizeof(Colour))) != 0);
        if (count_ == 1)
            PutStill(rows);
        else
            Expect(WebPAnimEncoderAdd(encoder_.get(), &rows, Time(), &config_) != 0);
        ++number_;
    }

    void TakePlace() override
    {
        if (count_ != 1)
            Assemble();
        file_.TakePlace();
    }

private:
    void Begin(const Picture& picture)
    {
        // The quickest of the levels: the next ones take twice as long for a tenth less.
        Expect(WebPConfigInit(&config_) != 0 && WebPConfigLosslessPreset(&config_, 0) != 0);
        WebPAnimEncoderOptions options;
        Expect(WebPAnimEncoderOptionsInit(&options) != 0);
        encoder_.reset(WebPAnimEncoderNew(picture.Width, picture.Height, &options));
        Expect(encoder_ != nullptr);
    }

    void PutStill(WebPRows& rows)
    {
        WebPMemoryWriter written;
        WebPMemoryWriterInit(&written);
        const std::unique_ptr<WebPMemoryWriter, void (*)(WebPMemoryWriter*)> freed(
            &written, WebPMemoryWriterClear);
        rows.custom_ptr = &written;
        rows.writer = WebPMemoryWrite;
        Expect(WebPEncode(&config_, &rows) != 0);
        file_.File().PutBytes(std::as_bytes(std::span(written.mem, written.size)));
    }

    void Assemble()
    {
        Expect(WebPAnimEncoderAdd(encoder_.get(), nullptr, Time(), nullptr) != 0);
        WebPData data;
        WebPDataInit(&data);
        const bool isGood = WebPAnimEncoderAssemble(encoder_.get(), &data) != 0;
        const std::unique_ptr<const std::uint8_t, void (*)(const std::uint8_t*)> bytes(
            data.bytes, [](const std::uint8_t* of) { WebPFree(const_cast<std::uint8_t*>(of)); });
        Expect(isGood);
        file_.File().PutBytes(std::as_bytes(std::span(bytes.get(), data.size)));
    }

    /// When the next picture shows, in milliseconds.
    int Time() const
    {
        constexpr int kMilliseconds = 1000;
        return (number_ * kMilliseconds + kPicturesPerSecond / 2) / kPicturesPerSecond;
    }

    void Expect(bool isGood) const
    {
        if (!isGood)
            throw FileFailure("write", path_,
                              encoder_ == nullptr ? "no encoder"
                                                  : WebPAnimEncoderGetError(encoder_.get()));
    }

    std::string path_;
    NewFile file_;
    std::size_t count_;
    WebPConfig config_{};
    std::unique_ptr<WebPAnimEncoder, FreeEncoder> encoder_;
    int number_ = 0; ///< of the next picture
};

} // namespace

bool HasWebP()
{
    return true;
}

std::string WebPLibrary()
{
    // A byte each for the numbers of the version.
    const auto version = static_cast<unsigned>(WebPGetEncoderVersion());
    return "libwebp " + std::to_string(version >> 16U) + '.' +
           std::to_string((version >> 8U) & 0xffU) + '.' + std::to_string(version & 0xffU);
}

std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t count)
{
    return std::make_unique<AnimatedWebP>(path, count);
}

#else

bool HasWebP()
{
    return false;
}

std::string WebPLibrary()
{
    return {};
}

std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t /*count*/)
{
    throw FileFailure("write", path, "This build of the program can't write WebP files");
}

#endif

} // namespace morlik
