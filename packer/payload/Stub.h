// The bare launcher, to a copy of which the payload is appended.
#pragma once

#include <filesystem>
#include <string>

namespace corvane::pack {

// The system for which a launcher is built.
enum class System {
    windows,
    host,  // that of the host build: Linux
};

// Its name for a user.
const char* systemName(System system);

// The system that this program runs on.
System ownSystem();

struct Stub {
    std::filesystem::path path;
    System system = System::windows;
    std::string bytes;
    std::size_t recordPosition = 0;  // of the length and the checksum that are left in it
};

// The bare launcher at `path`. Raises `PackError` for a file that is none: no program, another one,
// or a launcher that is packed already, which would hide what is appended behind its own payload.
Stub readStub(const std::filesystem::path& path);

// Puts another version of the program into the place of the one that was read. Raises `PackError`
// when it is no launcher.
void setProgram(Stub& stub, std::string bytes);

// The bare launcher for a system: `launcher.exe` or `launcher`, in the folder of this program or,
// if that is `bin`, in `lib/corvane` beside it. Raises `PackError` when it is in neither.
std::filesystem::path findStub(System system);
// The same for the bare self-extractor of a Java runtime, `unpack-java.exe` or `unpack-java`.
std::filesystem::path findUnpacker(System system);

// The bytes of a bare self-extractor for that system. Raises `PackError` for any other file.
std::string readUnpacker(const std::filesystem::path& path, System system);

}  // namespace corvane::pack
