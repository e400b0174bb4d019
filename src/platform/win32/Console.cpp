// Standard output and input. A console is written to and read from in UTF-16, so that its code
// pages, which all programs in it share, stay what they are, however the launcher ends.
#include <io.h>

#include <algorithm>
#include <cwchar>
#include <memory>

#include "platform/Platform.h"

namespace corvane {

namespace {

// Older systems refuse more than some ten thousand characters at once.
constexpr std::size_t longestWrite = 8192;
constexpr DWORD longestRead = 1024;
constexpr wchar_t endOfInput = L'\x1a';  // Ctrl-Z

// Null if the stream is a file or a pipe, or closed.
HANDLE consoleOf(std::FILE* stream) {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) ? handle : nullptr;
}

void writePiece(HANDLE console, const wchar_t* text, std::size_t length) {
    while (length > 0) {
        std::size_t count = std::min(length, longestWrite);
        // Both halves of a character go together.
        if (count < length && IS_HIGH_SURROGATE(text[count - 1]))
            --count;
        DWORD written = 0;
        WriteConsoleW(console, text, static_cast<DWORD>(count), &written, nullptr);
        text += count;
        length -= count;
    }
}

// A console may be set to take a line feed for no more than a step down.
void writeLines(HANDLE console, const wchar_t* text) {
    for (const wchar_t* end = std::wcschr(text, L'\n'); end != nullptr;
         end = std::wcschr(text, L'\n')) {
        writePiece(console, text, static_cast<std::size_t>(end - text));
        writePiece(console, L"\r\n", 2);
        text = end + 1;
    }
    writePiece(console, text, std::wcslen(text));
}

bool isMarkedAsWindowed() {
    const auto* const start = reinterpret_cast<const char*>(GetModuleHandleA(nullptr));
    const auto* const header = reinterpret_cast<const IMAGE_DOS_HEADER*>(start);
    return reinterpret_cast<const IMAGE_NT_HEADERS*>(start + header->e_lfanew)
               ->OptionalHeader.Subsystem == IMAGE_SUBSYSTEM_WINDOWS_GUI;
}

struct StandardStream {
    std::FILE* stream;
    DWORD number;
    const char* device;
    HANDLE former;
};

// The library's stream, and the handle that children inherit. To read the console's mode, which is
// how it is known, takes the right to read.
void leadToConsole(const StandardStream& standard) {
    if (GetFileType(standard.former) != FILE_TYPE_UNKNOWN) {
        SetStdHandle(standard.number, standard.former);
    } else if (std::freopen(standard.device, "r+", standard.stream) != nullptr) {
        SetStdHandle(standard.number,
                     reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(standard.stream))));
    }
}

// What was typed and not asked for yet.
class TypedBytes {
  public:
    int next(HANDLE console) {
        if (next_ == end_ && !read(console))
            return EOF;
        return static_cast<unsigned char>(bytes_[next_++]);
    }

  private:
    static constexpr int mostBytesOfOne = 3;

    // A line, or the front of a long one. False at the end of the input.
    bool read(HANDLE console) {
        wchar_t typed[longestRead + 1];
        DWORD count = 0;
        next_ = end_ = 0;
        if (!ReadConsoleW(console, typed, longestRead, &count, nullptr) || count == 0 ||
            *typed == endOfInput)
            return false;
        if (IS_HIGH_SURROGATE(typed[count - 1])) {
            DWORD more = 0;
            ReadConsoleW(console, typed + count, 1, &more, nullptr);
            count += more;
        }
        end_ = WideCharToMultiByte(CP_ACP, 0, typed, static_cast<int>(count), bytes_, sizeof bytes_,
                                   nullptr, nullptr);
        return end_ > 0;
    }

    char bytes_[(longestRead + 1) * mostBytesOfOne];
    int next_ = 0;
    int end_ = 0;
};

void writeTo(std::FILE* stream, const char* text) {
    const HANDLE console = consoleOf(stream);
    const int length =
        console == nullptr ? 0 : MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (length == 0) {
        std::fputs(text, stream);
        std::fflush(stream);
        return;
    }
    const auto wide = std::make_unique<wchar_t[]>(static_cast<std::size_t>(length));
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.get(), length);
    writeLines(console, wide.get());
}

}  // namespace

// Some systems set the handles that they find, too, and all forget the handler of control events.
void joinConsole() {
    if (!isMarkedAsWindowed())
        return;
    const StandardStream streams[] = {
        {stdin, STD_INPUT_HANDLE, "CONIN$", GetStdHandle(STD_INPUT_HANDLE)},
        {stdout, STD_OUTPUT_HANDLE, "CONOUT$", GetStdHandle(STD_OUTPUT_HANDLE)},
        {stderr, STD_ERROR_HANDLE, "CONOUT$", GetStdHandle(STD_ERROR_HANDLE)},
    };
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    for (const StandardStream& standard : streams)
        leadToConsole(standard);
    watchEndRequests();
}

void writeOutput(const char* text) {
    writeTo(stdout, text);
}

void writeErrorOutput(const char* text) {
    writeTo(stderr, text);
}

int readInput() {
    static TypedBytes typed;
    const HANDLE console = consoleOf(stdin);
    return console == nullptr ? std::getchar() : typed.next(console);
}

}  // namespace corvane
