// Text as JSON writes it.
#include "packer/base/Json.h"

namespace corvane::pack {

std::string json(std::string_view text) {
    constexpr std::string_view hexDigits = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20) {
            quoted += "\\u00";
            quoted += hexDigits[code >> 4];
            quoted += hexDigits[code & 0xF];
        } else {
            if (character == '"' || character == '\\')
                quoted += '\\';
            quoted += character;
        }
    }
    return quoted + '"';
}

}  // namespace corvane::pack
