// PNG files out of rasters and back.
//
// Writing: the container is four chunks around one zlib stream, so it is
// written here and all the cost is in the deflate, which is ISA-L's (or
// zlib's, when asked). Going through libpng instead would tie the writer to
// zlib, whose fastest level costs more than painting the image did.
// Reading: libpng's simplified API, which checks every chunk's CRC.
#include "Platform/drawing/CairoPainter.hpp"

#include <isa-l/igzip_lib.h>
#include <png.h>
#include <zlib.h>

#include <array>
#include <cstring>

namespace qrv::platform {
namespace {

constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t kChunkOverhead = 12;  // length, type, CRC

void putU32(std::uint8_t* at, std::uint32_t v) {
    at[0] = static_cast<std::uint8_t>(v >> 24);
    at[1] = static_cast<std::uint8_t>(v >> 16);
    at[2] = static_cast<std::uint8_t>(v >> 8);
    at[3] = static_cast<std::uint8_t>(v);
}

// Fills in the length, type and CRC around `size` bytes of data already at
// out[at + 8].
void sealChunk(std::vector<std::uint8_t>& out, std::size_t at, const char* type, std::size_t size) {
    putU32(out.data() + at, static_cast<std::uint32_t>(size));
    std::memcpy(out.data() + at + 4, type, 4);
    const auto crc = crc32(0, out.data() + at + 4, static_cast<uInt>(size + 4));
    putU32(out.data() + at + 8 + size, static_cast<std::uint32_t>(crc));
}

// Scratch memory kept by each thread between images: a fresh buffer of a few
// megabytes for every 3x image costs more in page faults and zeroing than the
// deflate itself. An unusually large image's buffers are let go afterwards.
struct Scratch {
    std::vector<std::uint8_t> rows, deflated, levelBuffer;
    static constexpr std::size_t kKeptBytes = 32u << 20;

    void trim() {
        for (auto* buffer : {&rows, &deflated, &levelBuffer})
            if (buffer->capacity() > kKeptBytes) std::vector<std::uint8_t>().swap(*buffer);
    }
};

// Each row behind its filter-type byte (0, none).
void unfilteredRows(const Raster& r, std::vector<std::uint8_t>& rows) {
    const std::size_t rowBytes = static_cast<std::size_t>(r.width) * 4;
    rows.resize(static_cast<std::size_t>(r.height) * (rowBytes + 1));
    for (std::size_t y = 0; y < static_cast<std::size_t>(r.height); ++y) {
        std::uint8_t* row = rows.data() + y * (rowBytes + 1);
        row[0] = 0;
        std::memcpy(row + 1, r.rgba.data() + y * rowBytes, rowBytes);
    }
}

// A zlib stream of `in` into `out`, at most `capacity` bytes; its size, or 0.
std::size_t deflateIsal(const std::vector<std::uint8_t>& in, std::uint8_t* out, std::size_t capacity, int level,
                        std::vector<std::uint8_t>& levelBuffer) {
    static constexpr std::array<std::uint32_t, 4> kLevelBuffer{0, ISAL_DEF_LVL1_DEFAULT, ISAL_DEF_LVL2_DEFAULT,
                                                               ISAL_DEF_LVL3_DEFAULT};
    levelBuffer.resize(kLevelBuffer[static_cast<std::size_t>(level)]);
    isal_zstream s;
    isal_deflate_stateless_init(&s);
    s.gzip_flag = IGZIP_ZLIB;
    s.level = static_cast<std::uint32_t>(level);
    s.level_buf = levelBuffer.empty() ? nullptr : levelBuffer.data();
    s.level_buf_size = static_cast<std::uint32_t>(levelBuffer.size());
    s.next_in = const_cast<std::uint8_t*>(in.data());  // read only; the API is not const-correct
    s.avail_in = static_cast<std::uint32_t>(in.size());
    s.end_of_stream = 1;
    s.flush = NO_FLUSH;
    s.next_out = out;
    s.avail_out = static_cast<std::uint32_t>(capacity);
    return isal_deflate_stateless(&s) == COMP_OK ? s.total_out : 0;
}

std::size_t deflateZlib(const std::vector<std::uint8_t>& in, std::uint8_t* out, std::size_t capacity, int level) {
    uLongf size = capacity;
    return compress2(out, &size, in.data(), in.size(), level) == Z_OK ? size : 0;
}

}  // namespace

RenderResult<std::vector<std::uint8_t>> encodePNG(const Raster& raster, const PngSettings& settings) {
    if (raster.width <= 0 || raster.height <= 0 ||
        raster.rgba.size() != static_cast<std::size_t>(raster.width) * static_cast<std::size_t>(raster.height) * 4)
        return RenderError{"raster is empty or its size does not match its pixels"};
    const bool isal = settings.deflate == PngSettings::Deflate::isal;
    const int maxLevel = isal ? ISAL_DEF_MAX_LEVEL : 9;
    if (settings.level < 0 || settings.level > maxLevel)
        return RenderError{std::string(isal ? "ISA-L" : "zlib") + " level must be between 0 and " +
                           std::to_string(maxLevel) + ", not " + std::to_string(settings.level)};

    thread_local Scratch scratch;
    unfilteredRows(raster, scratch.rows);
    // zlib's bound holds for stored blocks, the worst either deflate falls back to.
    scratch.deflated.resize(compressBound(static_cast<uLong>(scratch.rows.size())) + 64);
    const std::size_t size =
        isal ? deflateIsal(scratch.rows, scratch.deflated.data(), scratch.deflated.size(), settings.level,
                           scratch.levelBuffer)
             : deflateZlib(scratch.rows, scratch.deflated.data(), scratch.deflated.size(), settings.level);
    if (size == 0) {
        scratch.trim();
        return RenderError{"PNG encoding failed: the image did not compress"};
    }

    std::vector<std::uint8_t> out(kSignature.size() + kChunkOverhead + 13 + kChunkOverhead + size + kChunkOverhead);
    std::memcpy(out.data(), kSignature.data(), kSignature.size());
    std::size_t at = kSignature.size();

    std::uint8_t* header = out.data() + at + 8;
    putU32(header, static_cast<std::uint32_t>(raster.width));
    putU32(header + 4, static_cast<std::uint32_t>(raster.height));
    const std::array<std::uint8_t, 5> format{8, 6, 0, 0, 0};  // 8 bits, RGBA, deflate, adaptive filters, no interlace
    std::memcpy(header + 8, format.data(), format.size());
    sealChunk(out, at, "IHDR", 13);
    at += kChunkOverhead + 13;

    std::memcpy(out.data() + at + 8, scratch.deflated.data(), size);
    sealChunk(out, at, "IDAT", size);
    at += kChunkOverhead + size;
    scratch.trim();

    sealChunk(out, at, "IEND", 0);
    return out;
}

RenderResult<Raster> decodePNG(const std::vector<std::uint8_t>& data) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, data.data(), data.size()))
        return RenderError{std::string("not a PNG: ") + image.message};
    image.format = PNG_FORMAT_RGBA;
    Raster out{static_cast<int>(image.width), static_cast<int>(image.height),
               std::vector<std::uint8_t>(PNG_IMAGE_SIZE(image))};
    if (!png_image_finish_read(&image, nullptr, out.rgba.data(), 0, nullptr)) {
        std::string message = image.message;
        png_image_free(&image);
        return RenderError{"PNG decoding failed: " + message};
    }
    return out;
}

}  // namespace qrv::platform
