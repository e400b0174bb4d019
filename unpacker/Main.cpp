// The self-extractor: unpacks the Java runtime behind it into the current directory. The exit value
// is 0 when all of it is there, else 1, with the reason on standard error.
#include <new>

#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"
#include "unpacker/Unpacking.h"

namespace {

using corvane::LauncherException;
using corvane::String;

void unpack() {
    char path[32768] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const corvane::StreamGuard file(corvane::openStream(path, "rb"));
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0)
        throw LauncherException(String(path) + " can't be read.");
    corvane::unpackRuntime(file.get(), static_cast<std::uint32_t>(std::ftell(file.get())), "");
}

int fail(const String& why) {
    corvane::writeLine(stderr, why);
    return 1;
}

}  // namespace

int main() {
    corvane::restrictLibraryLoading();
    corvane::watchEndRequests();
    try {
        unpack();
        return 0;
    } catch (const LauncherException& failure) {
        return fail(failure.message);
    } catch (const std::bad_alloc&) {
        return fail("Not enough memory.");
    }
}
