// The note in the wininit file.
#include "host/WinInitRenamer.h"

#include <cstring>

#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr const char* section = "[Rename]";
// Room for the section line in a file that has none.
constexpr DWORD sectionRoom = 10;

struct UnmapView {
    void operator()(char* view) const { UnmapViewOfFile(view); }
};

String winInitPath() {
    char directory[MAX_PATH] = "";
    GetWindowsDirectoryA(directory, sizeof directory);
    return String(directory).append("\\WinInit.Ini");
}

DWORD totalLength(const StringList& lines) {
    std::size_t total = 0;
    for (const String& line : lines)
        total += line.length() + 1;
    return static_cast<DWORD>(total);
}

// Writes `text` and a line feed to `at`, and gives the place behind them.
char* putLine(char* at, const String& text) {
    std::memcpy(at, text.cstr(), text.length());
    at[text.length()] = '\n';
    return at + text.length() + 1;
}

// Opens the gap for `total` bytes of lines in the text of `size` bytes at `view`, and gives the
// place where they go; `size` grows by what this writes and by the gap.
char* openGap(char* view, DWORD& size, DWORD total) {
    char* at = std::strstr(view, section);
    if (at == nullptr) {
        at = putLine(view + size, section);
        size = static_cast<DWORD>(at - view) + total;
        return at;
    }
    at += std::strlen(section);
    char* const lineFeed = std::strchr(at, '\n');
    const DWORD added = lineFeed == nullptr ? total + 1 : total;
    if (lineFeed != nullptr)
        at = lineFeed + 1;
    std::memmove(at + added, at, size - static_cast<DWORD>(at - view));
    if (lineFeed == nullptr)
        *at++ = '\n';
    size += added;
    return at;
}

// Puts `lines` into the open file of `size` bytes, which grows; gives the system's code.
DWORD insertLines(HANDLE file, DWORD& size, const StringList& lines) {
    const DWORD total = totalLength(lines);
    const DWORD room = size + total + sectionRoom;
    const HandleGuard mapping(CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, room, nullptr));
    if (!mapping)
        return GetLastError();
    const std::unique_ptr<char, UnmapView> view(
        static_cast<char*>(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0)));
    if (!view)
        return GetLastError();
    std::memset(view.get() + size, 0, room - size);
    char* at = openGap(view.get(), size, total);
    for (const String& line : lines)
        at = putLine(at, line);
    return ERROR_SUCCESS;
}

}  // namespace

void ByteBuffer::allocate(std::uint32_t count, std::uint32_t elementSize) {
    const std::size_t size = std::size_t{count} * elementSize;
    bytes_ = size == 0 ? nullptr : std::make_unique<char[]>(size);
}

void WinInitRenamer::addDeleteLine(const char* path) {
    const DWORD size = GetShortPathNameA(path, nullptr, 0);
    if (size == 0)
        return;  // what isn't there needs no deletion
    ByteBuffer shortName;
    shortName.allocate(size, 1);
    GetShortPathNameA(path, shortName.bytes(), size);
    lines_.add(String("NUL=").append(shortName.bytes()));
}

std::uint32_t WinInitRenamer::flush() {
    if (lines_.count() == 0)
        return ERROR_SUCCESS;
    const FileGuard file(CreateFileA(winInitPath().cstr(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                     OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN,
                                     nullptr));
    if (!file)
        return GetLastError();
    DWORD size = GetFileSize(file.get(), nullptr);
    const DWORD code = insertLines(file.get(), size, lines_);
    SetFilePointer(file.get(), static_cast<LONG>(size), nullptr, FILE_BEGIN);
    SetEndOfFile(file.get());
    if (code == ERROR_SUCCESS)
        lines_.clear();
    return code;
}

}  // namespace corvane
