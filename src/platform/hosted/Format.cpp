// FormatMessageA: inserts, escapes, and the system's texts.
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/SystemOperations.h"
#include "platform/hosted/SystemTexts.h"

using namespace corvane::hosted;

namespace {

constexpr const char* lineEnd = "\r\n";

// Fills a pattern. The arguments form a list without a length, so each is taken when the first
// insert asks for it or for one behind it.
class Formatter {
  public:
    Formatter(const char* pattern, va_list* arguments) : next_(pattern), arguments_(arguments) {}

    // The filled text; none for a pattern that is wrong or asks for arguments that aren't there.
    std::optional<std::string> run() {
        while (*next_ != '\0' && !ended_) {
            if (!step()) {
                return std::nullopt;
            }
        }
        return text_;
    }

  private:
    // One character of the pattern, or an escape; false for a pattern that is wrong.
    bool step() {
        const char c = *next_++;
        if (c == '%') {
            return escape();
        }
        // A line end of any kind becomes Windows' own.
        if (c == '\r' || c == '\n') {
            next_ += c == '\r' && *next_ == '\n' ? 1 : 0;
            text_ += lineEnd;
            return true;
        }
        text_ += c;
        return true;
    }

    // What follows a percent sign. A character without a meaning stands for itself.
    bool escape() {
        const char c = *next_;
        if (c == '\0') {
            return false;
        }
        ++next_;
        if (c >= '1' && c <= '9') {
            return insert(static_cast<std::size_t>(c - '0'));
        }
        switch (c) {
            case '0':
                ended_ = true;
                break;
            case 'n':
                text_ += lineEnd;
                break;
            case 'r':
                text_ += '\r';
                break;
            case 't':
                text_ += '\t';
                break;
            default:
                text_ += c;
        }
        return true;
    }

    // "%1" and "%1!s!" alike; there are no other formats here.
    bool insert(std::size_t number) {
        if (*next_ == '!') {
            if (std::strncmp(next_, "!s!", 3) != 0) {
                return false;
            }
            next_ += 3;
        }
        if (arguments_ == nullptr) {
            return false;
        }
        while (taken_.size() < number) {
            const char* argument = va_arg(*arguments_, const char*);
            taken_.push_back(argument != nullptr ? argument : "(null)");
        }
        text_ += taken_[number - 1];
        return true;
    }

    const char* next_;
    va_list* arguments_;
    std::vector<const char*> taken_;
    std::string text_;
    bool ended_ = false;
};

// The text of a call; none with the last error. A system text whose inserts are asked for and
// aren't there keeps them.
std::optional<std::string> makeText(DWORD flags, LPCVOID source, DWORD id, va_list* arguments) {
    const bool keepInserts = (flags & FORMAT_MESSAGE_IGNORE_INSERTS) != 0;
    if ((flags & FORMAT_MESSAGE_FROM_STRING) != 0) {
        const char* pattern = static_cast<const char*>(source);
        return keepInserts ? pattern : Formatter(pattern, arguments).run();
    }
    const char* text = (flags & FORMAT_MESSAGE_FROM_SYSTEM) != 0 ? systemText(id) : nullptr;
    if (text == nullptr) {
        fail(ERROR_MR_MID_NOT_FOUND);
        return std::nullopt;
    }
    return (keepInserts ? text : Formatter(text, arguments).run().value_or(text)) + lineEnd;
}

// With ALLOCATE_BUFFER the caller passes the address of its pointer in place of a buffer.
DWORD giveBlock(const std::string& text, LPSTR target) {
    char* block = static_cast<char*>(std::malloc(text.size() + 1));
    if (block == nullptr) {
        return fail(ERROR_NOT_ENOUGH_MEMORY), 0;
    }
    std::memcpy(block, text.c_str(), text.size() + 1);
    *static_cast<char**>(static_cast<void*>(target)) = block;
    return static_cast<DWORD>(text.size());
}

}  // namespace

DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD /*language*/, LPSTR buffer,
                     DWORD size, va_list* arguments) {
    const bool allocate = (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
    // A caller that frees the pointer after a failure finds null.
    if (allocate) {
        *static_cast<char**>(static_cast<void*>(buffer)) = nullptr;
    }
    if (injectedFailure(__func__)) {
        return 0;
    }
    // The reason of a pattern that is wrong; other failures set their own.
    SetLastError(ERROR_INVALID_PARAMETER);
    const auto text = makeText(flags, source, id, arguments);
    if (!text) {
        return 0;
    }
    // Windows doesn't deliver empty texts.
    if (text->empty()) {
        return fail(ERROR_NO_WORK_DONE), 0;
    }
    if (allocate) {
        return giveBlock(*text, buffer);
    }
    if (text->size() >= size) {
        return fail(ERROR_INSUFFICIENT_BUFFER), 0;
    }
    return giveText(*text, buffer, size);
}
