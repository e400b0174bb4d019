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

}  // namespace

void writeOutput(const char* text) {
    const HANDLE console = consoleOf(stdout);
    const int length =
        console == nullptr ? 0 : MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (length == 0) {
        std::fputs(text, stdout);
        std::fflush(stdout);
        return;
    }
    const auto wide = std::make_unique<wchar_t[]>(static_cast<std::size_t>(length));
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.get(), length);
    writeLines(console, wide.get());
}

int readInput() {
    static TypedBytes typed;
    const HANDLE console = consoleOf(stdin);
    return console == nullptr ? std::getchar() : typed.next(console);
}

}  // namespace corvane
