// Runtime installers: any file is unpacked or refused; what is refused leaves nothing, and nothing
// lands outside the directory. An input is what a gzip stream unpacks to, with the trailer's sizes
// in front, or, when its first byte is odd, an installer as it is.
#include <zlib.h>

#include "Fuzz.h"
#include "launcherfile/RuntimeTrailer.h"
#include "support/Scratch.h"
#include "support/TestContext.h"
#include "unpacker/Unpacking.h"

using namespace corvane;

namespace {

std::string bigEndian(std::size_t value) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFF);
    return text;
}

std::string gzip(const std::string& text) {
    z_stream zlib{};
    deflateInit2(&zlib, 1, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    std::string packed(text.size() + 1000, '\0');
    std::string input = text;
    zlib.next_in = reinterpret_cast<Bytef*>(input.data());
    zlib.avail_in = static_cast<uInt>(input.size());
    zlib.next_out = reinterpret_cast<Bytef*>(packed.data());
    zlib.avail_out = static_cast<uInt>(packed.size());
    deflate(&zlib, Z_FINISH);
    packed.resize(zlib.total_out);
    deflateEnd(&zlib);
    return packed;
}

// The table is as long as the second byte says.
std::string installer(const std::string& input) {
    if (input.size() < 2 || (input[0] & 1) != 0)
        return input;
    const std::string archive = input.substr(2);
    const std::size_t table =
        std::min<std::size_t>(static_cast<unsigned char>(input[1]), archive.size());
    const std::string packed = gzip(archive);
    return packed + bigEndian(packed.size()) + bigEndian(table) +
           bigEndian(archive.size() - table) + bigEndian(0) + std::string(runtimeDigestBytes, 'd') +
           std::string(runtimeMark.begin(), runtimeMark.end());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const test::Scratch scratch;
    const test::TestContext run;
    std::filesystem::create_directory(scratch.native("target"));
    const std::string bytes = installer(fuzz::inputText(data, size));
    const String path = scratch.write("installer", bytes);
    const std::string failure = test::failureOf([&] {
        const StreamGuard file(openStream(path.cstr(), "rb"));
        unpackRuntime(file.get(), static_cast<std::uint32_t>(bytes.size()), scratch.path("target"));
    });
    bool jvmFile = false;
    for (const std::string& name : scratch.list()) {
        const bool inside = name.starts_with("target\\");
        fuzz::require(inside || name == "target" || name == "installer");
        fuzz::require(!inside || failure == "no failure");
        jvmFile = jvmFile || name == "target\\jvm";
    }
    fuzz::require(jvmFile == (failure == "no failure"));
    return 0;
}
