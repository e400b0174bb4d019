// Reading of a gzip stream.
#include "unpacker/PackedStream.h"

#include <algorithm>
#include <new>

#include "foundation/Exceptions.h"

namespace corvane {

namespace {

constexpr std::uint32_t blockSize = 1 << 16;
// The widest window, of a stream that begins and ends as gzip's do: with the sum of its bytes.
constexpr int gzipWindow = 15 + 16;

[[noreturn]] void refuse() {
    throw LauncherException("The Java runtime is damaged or cut short.");
}

}  // namespace

PackedStream::PackedStream(std::FILE* file, std::uint32_t size)
    : file_(file), left_(size), block_(std::make_unique<unsigned char[]>(blockSize)) {
    if (inflateInit2(&zlib_, gzipWindow) != Z_OK)
        throw std::bad_alloc();
}

PackedStream::~PackedStream() {
    inflateEnd(&zlib_);
}

// Goes on until there is no room in the output, or the input block is used up.
void PackedStream::inflateSome() {
    if (zlib_.avail_in == 0) {
        const std::size_t size = std::fread(block_.get(), 1, std::min(left_, blockSize), file_);
        left_ -= static_cast<std::uint32_t>(size);
        zlib_.next_in = block_.get();
        zlib_.avail_in = static_cast<uInt>(size);
    }
    // Without any input left this is an error, too.
    const int result = inflate(&zlib_, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END)
        refuse();
    ended_ = result == Z_STREAM_END;
}

void PackedStream::read(char* out, std::size_t size) {
    zlib_.next_out = reinterpret_cast<Bytef*>(out);
    zlib_.avail_out = static_cast<uInt>(size);
    while (zlib_.avail_out > 0) {
        if (ended_)
            refuse();
        inflateSome();
    }
}

void PackedStream::finish() {
    Bytef more = 0;
    zlib_.next_out = &more;
    zlib_.avail_out = 1;
    while (!ended_ && zlib_.avail_out > 0)
        inflateSome();
    if (zlib_.avail_out == 0 || zlib_.avail_in > 0 || left_ > 0)
        refuse();
}

}  // namespace corvane
