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

/// What the library writes a picture to.
struct WebPBytes : WebPMemoryWriter
{
    WebPBytes() : WebPMemoryWriter() { WebPMemoryWriterInit(this); }
    WebPBytes(const WebPBytes&) = delete;
    WebPBytes& operator=(const WebPBytes&) = delete;
    ~WebPBytes() { WebPMemoryWriterClear(this); }
};

/// Pictures begin at even places there.
PictureArea FromEven(PictureArea area)
{
    area.Width += area.X % 2;
    area.Height += area.Y % 2;
    area.X -= area.X % 2;
    area.Y -= area.Y % 2;
    return area;
}

class AnimatedWebP : public MovingFile
{
public:
    AnimatedWebP(const std::string& path, std::size_t count, const WebPForm& form)
        : path_(path), file_(path), count_(count), form_(form)
    {
        Expect(WebPConfigInit(&config_) != 0);
        constexpr float kLossyQuality = 60;
        if (form.IsLossy) {
            config_.quality = kLossyQuality;
            config_.method = 1;
        } else { // the quickest level: the next ones take twice as long for a tenth less
            Expect(WebPConfigLosslessPreset(&config_, 0) != 0);
        }
        Expect(files_ != nullptr);
    }

    void Add(const Picture& picture) override
    {
        const PictureArea area = FromEven(TakeChange(picture));
        WebPBytes bytes;
        Encode(picture, area, bytes);
        TakeBytes(bytes.size);
        if (count_ == 1)
            file_.File().PutBytes(std::as_bytes(std::span(bytes.mem, bytes.size)));
        else
            Append(area, {bytes.mem, bytes.size});
        ++number_;
    }

    void TakePlace() override
    {
        if (count_ != 1)
            Assemble();
        file_.TakePlace();
    }

private:
    void Encode(const Picture& picture, const PictureArea& area, WebPBytes& bytes) const
    {
        WebPRows rows;
        rows.use_argb = 1;
        rows.width = area.Width;
        rows.height = area.Height;
        const Colour* const first = &picture.Pixels[picture.At(area.X, area.Y)];
        Expect(WebPPictureImportRGBA(&rows, reinterpret_cast<const std::uint8_t*>(first),
                                     picture.Width * static_cast<int>(sizeof(Colour))) != 0);
        rows.custom_ptr = &bytes;
        rows.writer = WebPMemoryWrite;
        Expect(WebPEncode(&config_, &rows) != 0);
    }

    void Append(const PictureArea& area, const WebPData& bytes)
    {
        WebPMuxFrameInfo frame{};
        frame.bitstream = bytes;
        frame.x_offset = area.X;
        frame.y_offset = area.Y;
        frame.duration = TimeOf(number_ + 1) - TimeOf(number_);
        frame.id = WEBP_CHUNK_ANMF;
        frame.dispose_method = WEBP_MUX_DISPOSE_NONE;
        frame.blend_method = WEBP_MUX_NO_BLEND;
        Expect(WebPMuxPushFrame(files_.get(), &frame, 1) == WEBP_MUX_OK);
    }

    void Assemble()
    {
        const WebPMuxAnimParams endless{.bgcolor = 0, .loop_count = 0};
        Expect(WebPMuxSetAnimationParams(files_.get(), &endless) == WEBP_MUX_OK);
        Expect(WebPMuxSetCanvasSize(files_.get(), Last().Width, Last().Height) == WEBP_MUX_OK);
        WebPData data;
        WebPDataInit(&data);
        const bool isGood = WebPMuxAssemble(files_.get(), &data) == WEBP_MUX_OK;
        const std::unique_ptr<const std::uint8_t, void (*)(const std::uint8_t*)> bytes(
            data.bytes, [](const std::uint8_t* of) { WebPFree(const_cast<std::uint8_t*>(of)); });
        Expect(isGood);
        file_.File().PutBytes(std::as_bytes(std::span(bytes.get(), data.size)));
    }

    /// When a picture shows, in milliseconds.
    int TimeOf(int number) const
    {
        constexpr int kMilliseconds = 1000;
        return (number * kMilliseconds + form_.Rate / 2) / form_.Rate;
    }

    void Expect(bool isGood) const
    {
        if (!isGood)
            throw FileFailure("write", path_, "The library for WebP fails");
    }

    std::string path_;
    NewFile file_;
    std::size_t count_;
    WebPForm form_;
    WebPConfig config_{};
    std::unique_ptr<WebPMux, void (*)(WebPMux*)> files_{WebPMuxNew(), WebPMuxDelete};
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

std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t count,
                                            const WebPForm& form)
{
    return std::make_unique<AnimatedWebP>(path, count, form);
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

std::unique_ptr<MovingFile> NewAnimatedWebP(const std::string& path, std::size_t /*count*/,
                                            const WebPForm& /*form*/)
{
    throw FileFailure("write", path, "This build of the program can't write WebP files");
}

#endif

} // namespace morlik
